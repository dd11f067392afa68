#pragma once

#include "persistence/Preferences.h"

#include <string>
#include <string_view>
#include <vector>

namespace cindertop::documents {

/// The first sentence of a text, without its point.
std::string summaryOf(std::string_view text);

/// For a shell: 'it'\''s'.
std::string inSingleQuotes(std::string_view text);

std::vector<std::string_view> preferenceNames();

/// What a preference may be, where that can be listed.
std::vector<std::string_view> valuesOf(const Preference& preference);

/// With blanks between them.
std::string joined(const auto& words) {
    std::string text;
    for (const std::string_view word : words) {
        text += (text.empty() ? "" : " ") + std::string(word);
    }
    return text;
}

} // namespace cindertop::documents
