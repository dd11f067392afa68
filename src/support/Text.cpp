#include "support/Text.h"

#include <unicode/brkiter.h>
#include <unicode/locid.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/utext.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <cstdint>
#include <memory>

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

namespace {

constexpr bool isVisibleAscii(char c) {
    return c > ' ' && c <= '~';
}

bool isPlainAscii(std::string_view text) {
    // A line end of two bytes is one character.
    return std::ranges::none_of(text,
                                [](char c) { return static_cast<unsigned char>(c) >= 0x80U || c == '\r'; });
}

/// One a thread: making one costs more than the texts that it goes through.
icu::BreakIterator* characterBoundaries() {
    thread_local const auto boundaries = [] {
        UErrorCode status = U_ZERO_ERROR;
        std::unique_ptr<icu::BreakIterator> made(
            icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
        return U_SUCCESS(status) ? std::move(made) : nullptr;
    }();
    return boundaries.get();
}

/// Where the first `count` characters end, for text that is not plain ASCII.
std::size_t endOfCharacters(std::string_view text, std::size_t count) {
    UErrorCode status = U_ZERO_ERROR;
    UText opened = UTEXT_INITIALIZER;
    const std::unique_ptr<UText, decltype(&utext_close)> bytes(
        utext_openUTF8(&opened, text.data(), static_cast<std::int64_t>(text.size()), &status), &utext_close);
    icu::BreakIterator* const boundaries = characterBoundaries();
    if (boundaries == nullptr || U_FAILURE(status) != 0) {
        return text.size();
    }
    boundaries->setText(bytes.get(), status);
    std::int32_t end = boundaries->first();
    for (std::size_t passed = 0; passed < count; ++passed) {
        end = boundaries->next();
        if (end == icu::BreakIterator::DONE) {
            return text.size();
        }
    }
    return static_cast<std::size_t>(end);
}

} // namespace

std::string_view trimmingUnicodeWhitespace(std::string_view text) {
    if (text.empty() || (isVisibleAscii(text.front()) && isVisibleAscii(text.back()))) {
        return text;
    }
    const auto* const bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    const auto size = static_cast<std::int32_t>(text.size());
    std::int32_t keptFrom = size;
    std::int32_t keptTo = size;
    for (std::int32_t start = 0, next = 0; start < size; start = next) {
        UChar32 character = 0;
        U8_NEXT(bytes, next, size, character); // NOLINT: ICU's macro
        if (u_isUWhiteSpace(character) == 0) {
            keptFrom = std::min(keptFrom, start);
            keptTo = next;
        }
    }
    return text.substr(static_cast<std::size_t>(keptFrom), static_cast<std::size_t>(keptTo - keptFrom));
}

std::string_view firstCharacters(std::string_view text, std::size_t count) {
    if (text.size() <= count) { // no character is shorter than a byte
        return text;
    }
    // One byte more: an accent may follow the last letter.
    if (isPlainAscii(text.substr(0, count + 1))) {
        return text.substr(0, count);
    }
    return text.substr(0, endOfCharacters(text, count));
}

std::string truncated(std::string_view text, std::size_t count) {
    const std::string_view kept = firstCharacters(text, count);
    std::string result(kept);
    if (kept.size() < text.size()) {
        result += "...";
    }
    return result;
}

} // namespace cindertop
