#include "persistence/HistorySanitizers.h"

#include "support/Characters.h"

#include <algorithm>
#include <cstddef>

namespace cindertop {
namespace {

constexpr std::size_t longestLabel = 48;
constexpr std::size_t longestBundleIdentifier = 128;

constexpr bool isIdentifierCharacter(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '.' ||
           c == '_' || c == '-';
}

} // namespace

std::optional<std::string> sanitizedLabel(std::string_view label) {
    const std::string_view trimmed = trimmingUnicodeWhitespace(label);
    if (trimmed.empty()) {
        return std::nullopt;
    }
    // Without a separator npos + 1 is 0: the whole text.
    const std::string_view lastPiece = trimmed.substr(trimmed.find_last_of("/\\:") + 1);
    return std::string(firstCharacters(lastPiece, longestLabel));
}

std::optional<std::string> sanitizedBundleIdentifier(std::string_view identifier) {
    const std::string_view trimmed = trimmingUnicodeWhitespace(identifier);
    if (trimmed.empty() || !std::ranges::all_of(trimmed, isIdentifierCharacter)) {
        return std::nullopt;
    }
    return std::string(trimmed.substr(0, longestBundleIdentifier));
}

} // namespace cindertop
