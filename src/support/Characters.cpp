#include "support/Characters.h"

#include <unicode/brkiter.h>
#include <unicode/uchar.h>
#include <unicode/utext.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <cstdint>
#include <memory>

namespace cindertop {
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
