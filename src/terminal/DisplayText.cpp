#include "terminal/DisplayText.h"

#include "support/Text.h"

#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include <cstddef>
#include <cstdint>

namespace cindertop::cli {

namespace {

constexpr std::string_view replacementCharacter = "\xEF\xBF\xBD";
constexpr UChar32 zeroWidthNonJoiner = 0x200C;
constexpr UChar32 zeroWidthJoiner = 0x200D;
constexpr UChar32 degreeSign = 0xB0;

/// Calls `use(codePoint, bytes)` for each character of valid UTF-8 until `use` says false.
template <typename Use>
void forEachCharacter(std::string_view text, Use use) {
    const auto* const bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    const auto size = static_cast<std::int32_t>(text.size());
    for (std::int32_t start = 0, next = 0; start < size; start = next) {
        UChar32 character = 0;
        U8_NEXT(bytes, next, size, character); // NOLINT: ICU's macro
        const auto length = static_cast<std::size_t>(next - start);
        if (!use(character, text.substr(static_cast<std::size_t>(start), length))) {
            return;
        }
    }
}

bool isAsciiControl(UChar32 character) {
    return character < 0x20 || character == 0x7F;
}

/// Joiners and variation selectors only change how neighbours are drawn, and terminals disagree about the
/// width.
bool isDrawingHint(UChar32 character) {
    return character == zeroWidthJoiner || character == zeroWidthNonJoiner ||
           u_hasBinaryProperty(character, UCHAR_VARIATION_SELECTOR) != 0;
}

bool isInvisible(UChar32 character) {
    switch (u_charType(character)) {
    case U_CONTROL_CHAR:
    case U_FORMAT_CHAR:
    case U_LINE_SEPARATOR:
    case U_PARAGRAPH_SEPARATOR:
    case U_SURROGATE:
    case U_PRIVATE_USE_CHAR:
    case U_UNASSIGNED:
        return true;
    default:
        return false;
    }
}

std::string shownCharacter(UChar32 character, std::string_view bytes, Charset charset) {
    if (isAsciiControl(character)) {
        return {'^', static_cast<char>(character ^ 0x40)};
    }
    if (character < 0x80) {
        return std::string(bytes);
    }
    if (isDrawingHint(character)) {
        return {};
    }
    if (charset == Charset::ascii) {
        return character == degreeSign ? "" : "?";
    }
    return std::string(isInvisible(character) ? replacementCharacter : bytes);
}

int columnsOfCharacter(UChar32 character) {
    if (character < 0x300) {
        return 1;
    }
    const auto type = u_charType(character);
    const bool isHangulVowelOrFinal = character >= 0x1160 && character <= 0x11FF;
    if (type == U_NON_SPACING_MARK || type == U_ENCLOSING_MARK || isHangulVowelOrFinal) {
        return 0;
    }
    const auto width = u_getIntPropertyValue(character, UCHAR_EAST_ASIAN_WIDTH);
    return width == U_EA_WIDE || width == U_EA_FULLWIDTH ? 2 : 1;
}

std::string blanks(int count) {
    std::string text;
    text.resize(count > 0 ? static_cast<std::size_t>(count) : 0, ' ');
    return text;
}

} // namespace

std::string shown(std::string_view bytes, Charset charset) {
    const auto text = repairedUtf8(bytes);
    std::string result;
    result.reserve(text.size());
    forEachCharacter(text, [&](UChar32 character, std::string_view encoded) {
        result += shownCharacter(character, encoded, charset);
        return true;
    });
    return result;
}

int columnsOf(std::string_view text) {
    int columns = 0;
    forEachCharacter(text, [&](UChar32 character, std::string_view) {
        columns += columnsOfCharacter(character);
        return true;
    });
    return columns;
}

std::string_view beginning(std::string_view text, int columns) {
    std::size_t kept = 0;
    int used = 0;
    forEachCharacter(text, [&](UChar32 character, std::string_view encoded) {
        used += columnsOfCharacter(character);
        if (used > columns) {
            return false;
        }
        kept += encoded.size();
        return true;
    });
    return text.substr(0, kept);
}

std::string fitted(std::string_view text, int columns, Charset charset) {
    if (columnsOf(text) <= columns) {
        return std::string(text);
    }
    if (columns < 1) {
        return {};
    }
    return std::string(beginning(text, columns - 1)) + (charset == Charset::unicode ? "…" : "~");
}

std::string paddedRight(std::string_view text, int columns) {
    return std::string(text) + blanks(columns - columnsOf(text));
}

std::string paddedLeft(std::string_view text, int columns) {
    return blanks(columns - columnsOf(text)) + std::string(text);
}

} // namespace cindertop::cli
