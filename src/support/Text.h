#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace cindertop {

/// Lower case after the Unicode rules that hold in every language (no Turkish dotless i).
std::string lowerCased(std::string_view text);

/// The bytes as valid UTF-8: each maximal invalid sequence becomes U+FFFD.
std::string repairedUtf8(std::string_view bytes);

/// Without the control characters (Unicode Cc and Cf) at both ends.
std::string trimmingControlCharacters(std::string_view text);

/// The bytes up to the first zero byte, or all of them.
constexpr std::string_view untilZeroByte(std::string_view bytes) {
    return bytes.substr(0, bytes.find('\0'));
}

/// Without blanks, tabs and line ends at both ends, as a kernel's text files need it.
std::string_view trimmingWhitespace(std::string_view text);

/// Without white space and line ends of every script (Unicode White_Space) at both ends.
std::string_view trimmingUnicodeWhitespace(std::string_view text);

/// The first `count` characters as people count them: a letter with its accents, a flag or a family emoji is
/// one. The whole text when it has no more than that.
std::string_view firstCharacters(std::string_view text, std::size_t count);

/// A text of more than `count` characters cut to its first `count` and "..."; others as they are.
std::string truncated(std::string_view text, std::size_t count);

} // namespace cindertop
