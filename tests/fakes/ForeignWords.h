#pragma once

#include <array>
#include <cctype>
#include <string>
#include <string_view>
#include <vector>

namespace cindertop::fakes {

/// Words, whatever their case, that name another system than Linux, its maker or a thing of its desktop.
inline constexpr auto foreignWords = std::to_array<std::string_view>({
    "mac",
    "macs",
    "macos",
    "macbook",
    "macbooks",
    "apple",
    "spotlight",
    "dock",
    "menu bar",
    "soc",
    "low power mode",
    "system settings",
});

/// Those of them that stand in a text as whole words.
inline std::vector<std::string> foreignWordsIn(std::string_view text) {
    std::string lower;
    for (const char letter : text) {
        lower += static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
    }
    const auto isPartOfWord = [&](std::size_t place) {
        return place < lower.size() && (std::isalnum(static_cast<unsigned char>(lower[place])) != 0);
    };
    std::vector<std::string> found;
    for (const auto word : foreignWords) {
        for (auto place = lower.find(word); place != std::string::npos; place = lower.find(word, place + 1)) {
            if (!isPartOfWord(place - 1) && !isPartOfWord(place + word.size())) {
                found.emplace_back(word);
                break;
            }
        }
    }
    return found;
}

} // namespace cindertop::fakes
