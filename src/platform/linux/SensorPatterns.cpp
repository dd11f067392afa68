#include "platform/linux/SensorPatterns.h"

#include <algorithm>
#include <cstddef>

namespace cindertop::linux_platform {

namespace {

constexpr bool isPatternDigit(char character) {
    return character >= '0' && character <= '9';
}

constexpr char lowerAscii(char character) {
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

std::string_view leadingNumber(std::string_view text) {
    const auto* const end = std::ranges::find_if_not(text, isPatternDigit);
    return text.substr(0, static_cast<std::size_t>(end - text.begin()));
}

/// The number that "#" stands for, empty without "#"; none when the text does not match.
std::optional<std::string_view> matchOne(std::string_view pattern, std::string_view text) {
    std::string_view number;
    while (!pattern.empty()) {
        const char expected = pattern.front();
        pattern.remove_prefix(1);
        if (expected == '*') {
            for (std::size_t skipped = 0; skipped <= text.size(); ++skipped) {
                if (matchOne(pattern, text.substr(skipped))) {
                    return number;
                }
            }
            return std::nullopt;
        }
        if (expected == '#') {
            number = leadingNumber(text);
            if (number.empty()) {
                return std::nullopt;
            }
            text.remove_prefix(number.size());
        } else {
            if (text.empty() || lowerAscii(text.front()) != lowerAscii(expected)) {
                return std::nullopt;
            }
            text.remove_prefix(1);
        }
    }
    return text.empty() ? std::optional(number) : std::nullopt;
}

} // namespace

std::optional<std::string_view> matchPattern(std::string_view alternatives, std::string_view text) {
    for (;;) {
        const auto bar = alternatives.find('|');
        if (const auto number = matchOne(alternatives.substr(0, bar), text)) {
            return number;
        }
        if (bar == std::string_view::npos) {
            return std::nullopt;
        }
        alternatives.remove_prefix(bar + 1);
    }
}

std::string_view trailingDigits(std::string_view text) {
    std::size_t start = text.size();
    while (start > 0 && isPatternDigit(text[start - 1])) {
        --start;
    }
    return text.substr(start);
}

std::string_view lastNumber(std::string_view text) {
    while (!text.empty() && !isPatternDigit(text.back())) {
        text.remove_suffix(1);
    }
    return trailingDigits(text);
}

} // namespace cindertop::linux_platform
