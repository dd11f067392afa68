#include "support/PropertyListText.h"

#include "support/PropertyListError.h"
#include "support/Text.h"

#include <unicode/utf8.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstring>
#include <memory>
#include <system_error>

namespace cindertop {
namespace {

constexpr std::string_view blanks = " \t\r\n";
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

[[noreturn]] void refuse(std::size_t byte, const std::string& problem) {
    throw PropertyListError("byte " + std::to_string(byte), problem);
}

/// Eight bytes of ASCII without control characters: nearly all of a file, tested at once.
bool isPlain(const char* bytes) {
    std::uint64_t word = 0;
    std::memcpy(&word, bytes, sizeof word);
    constexpr std::uint64_t high = 0x8080808080808080U;
    constexpr std::uint64_t blank = 0x2020202020202020U;
    return ((word | (word - blank)) & high) == 0;
}

/// The characters of XML 1.0. What a file may hold of control characters are tab and line ends.
bool isXmlCharacter(std::int32_t character) {
    return character == '\t' || character == '\n' || character == '\r' ||
           (character >= 0x20 && character <= 0xD7FF) || (character >= 0xE000 && character <= 0xFFFD) ||
           (character >= 0x10000 && character <= 0x10FFFF);
}

void checkCharacters(std::string_view text) {
    const auto* const bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    const auto size = static_cast<std::int32_t>(text.size());
    for (std::int32_t next = 0; next < size;) {
        if (size - next >= 8 && isPlain(text.data() + next)) {
            next += 8;
            continue;
        }
        const auto start = static_cast<std::size_t>(next);
        UChar32 character = 0;
        U8_NEXT(bytes, next, size, character); // NOLINT: ICU's macro
        if (!isXmlCharacter(character)) {
            refuse(start, character < 0 ? "is no UTF-8" : "holds a character that XML does not allow");
        }
    }
}

bool isKnownReference(std::string_view name) {
    for (const std::string_view known : {"amp", "lt", "gt", "quot", "apos"}) {
        if (name == known) {
            return true;
        }
    }
    if (!name.starts_with('#')) {
        return false;
    }
    const bool isHexadecimal = name.starts_with("#x");
    const std::string_view digits = name.substr(isHexadecimal ? 2 : 1);
    std::uint32_t code = 0;
    const auto [end, error] =
        std::from_chars(digits.data(), digits.data() + digits.size(), code, isHexadecimal ? 16 : 10);
    return error == std::errc{} && end == digits.data() + digits.size() && code <= 0x10FFFFU &&
           isXmlCharacter(static_cast<std::int32_t>(code));
}

/// The next comment that begins at or behind `from`; past the end without one.
std::size_t nextComment(std::string_view text, std::size_t from) {
    return std::min(text.find("<!--", from), text.size());
}

/// Every "&" outside comments has to begin a reference to a character.
void checkReferences(std::string_view text, std::size_t from) {
    constexpr std::size_t longestReference = 12;
    std::size_t comment = from;
    bool isCommentKnown = false;
    for (std::size_t at = text.find('&', from); at != std::string_view::npos; at = text.find('&', at)) {
        if (!isCommentKnown || comment < from) {
            comment = nextComment(text, from);
            isCommentKnown = true;
        }
        if (comment < at) {
            from = std::min(text.find("-->", comment), text.size());
            at = from;
            continue;
        }
        const std::string_view following = text.substr(at + 1, longestReference);
        const std::size_t end = following.find(';');
        if (end == std::string_view::npos || !isKnownReference(following.substr(0, end))) {
            refuse(at, "refers to something that is no character");
        }
        ++at;
    }
}

void checkHasNoInstruction(std::string_view text, std::size_t from) {
    for (std::size_t at = text.find('?', from); at != std::string_view::npos; at = text.find('?', at + 1)) {
        if (text[at - 1] == '<') {
            refuse(at - 1, "is a processing instruction");
        }
    }
}

/// Goes through what stands before the element `plist`.
class Prolog {
public:
    explicit Prolog(std::string_view text) : text_(text) {}

    std::size_t end() {
        skip(byteOrderMark);
        skipDeclaration();
        skipBlanksAndComments();
        skipDoctype();
        skipBlanksAndComments();
        if (!rest().starts_with("<plist")) {
            refuse(at_, "is no property list");
        }
        return at_;
    }

private:
    std::string_view rest() const { return text_.substr(at_); }

    bool skip(std::string_view expected) {
        const bool isThere = rest().starts_with(expected);
        at_ += isThere ? expected.size() : 0;
        return isThere;
    }

    /// Skips to behind `mark` and returns what came before it.
    std::string_view skipBehind(std::string_view mark, const char* problem) {
        const std::size_t length = rest().find(mark);
        if (length == std::string_view::npos) {
            refuse(at_, problem);
        }
        const std::string_view skipped = rest().substr(0, length);
        at_ += length + mark.size();
        return skipped;
    }

    void skipDeclaration() {
        const std::size_t start = at_;
        if (!skip("<?xml ")) {
            return;
        }
        const std::string declaration = lowerCased(skipBehind("?>", "is an unfinished XML declaration"));
        if (declaration.contains("encoding") && !declaration.contains("encoding=\"utf-8\"") &&
            !declaration.contains("encoding='utf-8'")) {
            refuse(start, "is in another encoding than UTF-8");
        }
    }

    void skipBlanksAndComments() {
        for (;;) {
            at_ = std::min(text_.find_first_not_of(blanks, at_), text_.size());
            if (!skip("<!--")) {
                return;
            }
            skipBehind("-->", "is an unfinished comment");
        }
    }

    void skipDoctype() {
        const std::size_t start = at_;
        if (!skip("<!DOCTYPE")) {
            return;
        }
        const std::string_view doctype = skipBehind(">", "is an unfinished doctype");
        for (const std::string_view publisher : {"Apple", "Apple Computer"}) {
            const std::string standard =
                " plist PUBLIC \"-//" + std::string(publisher) +
                "//DTD PLIST 1.0//EN\" \"http://www.apple.com/DTDs/PropertyList-1.0.dtd\"";
            if (doctype == standard) {
                return;
            }
        }
        refuse(start, "is another doctype than that of property lists");
    }

    std::string_view text_;
    std::size_t at_ = 0;
};

bool isWritable(std::int32_t character) {
    const bool isControl = (character < 0x20 && character != '\t' && character != '\n') ||
                           (character >= 0x7F && character <= 0x9F);
    return !isControl && isXmlCharacter(character);
}

enum class Writing : std::uint8_t { asItStands, escaped, examined };

/// What becomes of each byte. Tables, because this runs over every text of a history.
constexpr std::array<Writing, 256> writings = [] {
    std::array<Writing, 256> table{};
    table.fill(Writing::examined);
    for (std::size_t byte = 0x20; byte < 0x7F; ++byte) {
        table[byte] = Writing::asItStands;
    }
    table['\t'] = table['\n'] = Writing::asItStands;
    table['&'] = table['<'] = table['>'] = Writing::escaped;
    return table;
}();

Writing writingOf(char byte) {
    return writings[static_cast<unsigned char>(byte)];
}

std::string_view escaped(char c) {
    switch (c) {
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

std::size_t checkedPropertyListStart(std::string_view text) {
    if (text.size() > propertyListSizeLimit) {
        refuse(propertyListSizeLimit, "is beyond the largest size");
    }
    checkCharacters(text);
    const std::size_t start = Prolog(text).end();
    checkReferences(text, start);
    checkHasNoInstruction(text, start);
    // The XML parser drops text behind the last element. Behind a first "</plist>" only markup that it
    // refuses could hide a second one, so a text that ends with it, and has one element, has nothing else
    // there.
    if (!text.substr(0, text.find_last_not_of(blanks) + 1).ends_with("</plist>")) {
        refuse(text.size(), "does not end with </plist>");
    }
    return start;
}

std::optional<std::int64_t> parsePropertyListInteger(std::string_view text) {
    std::int64_t value = 0;
    const char* const end = std::to_address(text.end());
    const auto [rest, error] = std::from_chars(std::to_address(text.begin()), end, value);
    return error == std::errc{} && rest == end ? std::optional(value) : std::nullopt;
}

std::optional<double> parsePropertyListReal(std::string_view text) {
    double value = 0;
    const char* const end = std::to_address(text.end());
    const auto [rest, error] = std::from_chars(std::to_address(text.begin()), end, value);
    return error == std::errc{} && rest == end && std::isfinite(value) ? std::optional(value) : std::nullopt;
}

std::string writablePropertyListText(std::string_view text) {
    if (std::ranges::none_of(text, [](char byte) { return writingOf(byte) == Writing::examined; })) {
        return std::string(text);
    }
    const std::string valid = repairedUtf8(text);
    const auto* const bytes = reinterpret_cast<const std::uint8_t*>(valid.data());
    const auto size = static_cast<std::int32_t>(valid.size());
    std::string kept;
    for (std::int32_t start = 0, next = 0; start < size; start = next) {
        UChar32 character = 0;
        U8_NEXT(bytes, next, size, character); // NOLINT: ICU's macro
        if (isWritable(character)) {
            kept.append(valid, static_cast<std::size_t>(start), static_cast<std::size_t>(next - start));
        }
    }
    return kept;
}

void appendPropertyListText(std::string& output, std::string_view text) {
    if (std::ranges::all_of(text, [](char byte) { return writingOf(byte) == Writing::asItStands; })) {
        output += text;
        return;
    }
    for (const char byte : writablePropertyListText(text)) {
        const std::string_view escape = escaped(byte);
        if (escape.empty()) {
            output += byte;
        } else {
            output += escape;
        }
    }
}

} // namespace cindertop
