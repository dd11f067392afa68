#include "support/Text.h"

#include <unicode/locid.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <cstdint>

namespace cindertop {

namespace {

bool isAscii(std::string_view text) {
    return std::ranges::all_of(text, [](char byte) { return static_cast<signed char>(byte) >= 0; });
}

constexpr bool isPrintableAscii(char byte) {
    return byte >= ' ' && byte <= '~';
}

constexpr char asciiLowerCased(char byte) {
    return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte - 'A' + 'a') : byte;
}

icu::UnicodeString decoded(std::string_view bytes) {
    return icu::UnicodeString::fromUTF8({bytes.data(), static_cast<std::int32_t>(bytes.size())});
}

bool isControl(UChar32 character) {
    const auto category = u_charType(character);
    return category == U_CONTROL_CHAR || category == U_FORMAT_CHAR;
}

/// Bytes that are no character, to which ICU gives a negative code, are no control character either.
std::string_view withoutControlsAtEnds(std::string_view text) {
    const auto* const bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    const auto size = static_cast<std::int32_t>(text.size());
    auto keptFrom = size;
    auto keptTo = size;
    for (std::int32_t start = 0, next = 0; start < size; start = next) {
        UChar32 character = 0;
        U8_NEXT(bytes, next, size, character); // NOLINT: ICU's macro
        if (character < 0 || !isControl(character)) {
            keptFrom = std::min(keptFrom, start);
            keptTo = next;
        }
    }
    return text.substr(static_cast<std::size_t>(keptFrom), static_cast<std::size_t>(keptTo - keptFrom));
}

} // namespace

std::string lowerCased(std::string_view text) {
    std::string lower;
    if (isAscii(text)) {
        lower.resize(text.size());
        std::ranges::transform(text, lower.begin(), asciiLowerCased);
    } else {
        decoded(text).toLower(icu::Locale::getRoot()).toUTF8String(lower);
    }
    return lower;
}

std::string repairedUtf8(std::string_view bytes) {
    if (isAscii(bytes)) {
        return std::string(bytes);
    }
    std::string repaired;
    decoded(bytes).toUTF8String(repaired);
    return repaired;
}

std::string trimmingControlCharacters(std::string_view text) {
    if (text.empty() || (isPrintableAscii(text.front()) && isPrintableAscii(text.back()))) {
        return std::string(text);
    }
    return std::string(withoutControlsAtEnds(text));
}

std::string_view trimmingWhitespace(std::string_view text) {
    constexpr std::string_view whitespace = " \t\r\n";
    const auto first = text.find_first_not_of(whitespace);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(whitespace) - first + 1);
}

} // namespace cindertop
