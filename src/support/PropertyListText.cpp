#include "support/PropertyListText.h"

#include "support/PropertyListError.h"
#include "support/Text.h"

#include <unicode/utf8.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <memory>
#include <system_error>

namespace cindertop {
namespace {

[[noreturn]] void refuse(std::size_t byte, const std::string& problem) {
    throw PropertyListError("byte " + std::to_string(byte), problem);
}

/// The characters of XML 1.0. What a file may hold of control characters are tab and line ends.
bool isXmlCharacter(std::int32_t character) {
    return character == '\t' || character == '\n' || character == '\r' ||
           (character >= 0x20 && character <= 0xD7FF) || (character >= 0xE000 && character <= 0xFFFD) ||
           (character >= 0x10000 && character <= 0x10FFFF);
}

bool isWritable(std::int32_t character) {
    const bool isControl = (character < 0x20 && character != '\t' && character != '\n') ||
                           (character >= 0x7F && character <= 0x9F);
    return !isControl && isXmlCharacter(character);
}

/// Calls `visit` with each character and its bytes; with a negative one for bytes that are no UTF-8.
void forEachCharacter(std::string_view text, const auto& visit) {
    const auto* const bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    const auto size = static_cast<std::int32_t>(text.size());
    for (std::int32_t start = 0, next = 0; start < size; start = next) {
        UChar32 character = 0;
        U8_NEXT(bytes, next, size, character); // NOLINT: ICU's macro
        visit(character,
              text.substr(static_cast<std::size_t>(start), static_cast<std::size_t>(next - start)));
    }
}

bool isCharacterCode(std::string_view digits, int base) {
    std::uint32_t code = 0;
    const char* const end = std::to_address(digits.end());
    const auto [rest, error] = std::from_chars(std::to_address(digits.begin()), end, code, base);
    return error == std::errc{} && rest == end && code <= 0x10FFFFU &&
           isXmlCharacter(static_cast<std::int32_t>(code));
}

/// Whether a text that begins with "&" begins with a reference to a character.
bool beginsWithReference(std::string_view text) {
    constexpr std::size_t longest = 12;
    const std::size_t end = text.substr(0, longest).find(';');
    if (end == std::string_view::npos) {
        return false;
    }
    const std::string_view name = text.substr(1, end - 1);
    if (name.starts_with("#x")) {
        return isCharacterCode(name.substr(2), 16);
    }
    constexpr std::array<std::string_view, 5> known{"amp", "lt", "gt", "quot", "apos"};
    return name.starts_with('#') ? isCharacterCode(name.substr(1), 10)
                                 : std::ranges::find(known, name) != known.end();
}

/// The parser leaves other references as they stand. Those in comments do not count.
void checkReferences(std::string_view text) {
    constexpr std::string_view comment = "<!--";
    for (std::size_t at = 0; (at = text.find_first_of("&<", at)) != std::string_view::npos; ++at) {
        if (text.substr(at).starts_with(comment)) {
            at = std::min(text.find("-->", at + comment.size()), text.size());
        } else if (text[at] == '&' && !beginsWithReference(text.substr(at))) {
            refuse(at, "refers to something that is no character");
        }
    }
}

/// Nearly every character of a history.
bool isPlain(char byte) {
    return (byte >= ' ' && byte <= '~') || byte == '\t' || byte == '\n';
}

std::string_view escaped(char byte) {
    switch (byte) {
    case '&':
        return "&amp;";
    case '<':
        return "&lt;";
    case '>':
        return "&gt;";
    default:
        return {};
    }
}

} // namespace

void checkPropertyListText(std::string_view text) {
    if (text.size() > propertyListSizeLimit) {
        refuse(propertyListSizeLimit, "is beyond the largest size");
    }
    forEachCharacter(text, [text](UChar32 character, std::string_view bytes) {
        if (!isXmlCharacter(character)) {
            refuse(static_cast<std::size_t>(bytes.data() - text.data()),
                   character < 0 ? "is no UTF-8" : "holds a character that XML does not allow");
        }
    });
    checkReferences(text);
}

std::string writablePropertyListText(std::string_view text) {
    if (std::ranges::all_of(text, isPlain)) {
        return std::string(text);
    }
    std::string kept;
    forEachCharacter(repairedUtf8(text), [&kept](UChar32 character, std::string_view bytes) {
        if (isWritable(character)) {
            kept += bytes;
        }
    });
    return kept;
}

void appendPropertyListText(std::string& output, std::string_view text) {
    const auto isMarkup = [](char byte) { return byte == '&' || byte == '<' || byte == '>'; };
    if (std::ranges::all_of(text, [&](char byte) { return isPlain(byte) && !isMarkup(byte); })) {
        output += text;
        return;
    }
    for (const char byte : writablePropertyListText(text)) {
        const std::string_view escape = escaped(byte);
        output += escape.empty() ? std::string_view(&byte, 1) : escape;
    }
}

} // namespace cindertop
