#pragma once

#include <string>
#include <string_view>

namespace cindertop::cli {

/// The characters that the terminal, or another reader, can show.
enum class Charset { unicode, ascii };

/// Any bytes as one harmless line of valid UTF-8. Names come from other people's programs: control characters
/// become visible ("^[" for escape), invisible and direction-changing ones U+FFFD. With `ascii` everything
/// beyond ASCII becomes "?", and the degree sign vanishes ("36C").
std::string shown(std::string_view bytes, Charset charset);

/// The terminal columns that a text made by `shown` takes: wide characters two, combining ones none.
int columnsOf(std::string_view text);

/// As much of the text's beginning as fits that many columns, in whole characters.
std::string_view beginning(std::string_view text, int columns);

/// The text cut to at most that many columns; what was cut shows as "…", with `ascii` as "~".
std::string fitted(std::string_view text, int columns, Charset charset);

/// Filled up with blanks behind, or in front. A longer text stays as it is.
std::string paddedRight(std::string_view text, int columns);
std::string paddedLeft(std::string_view text, int columns);

} // namespace cindertop::cli
