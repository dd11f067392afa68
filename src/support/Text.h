#pragma once

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

} // namespace cindertop
