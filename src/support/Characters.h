#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace cindertop {

/// Without white space and line ends of every script (Unicode White_Space) at both ends.
std::string_view trimmingUnicodeWhitespace(std::string_view text);

/// The first `count` characters as people count them: a letter with its accents, a flag or a family emoji is
/// one. The whole text when it has no more than that.
std::string_view firstCharacters(std::string_view text, std::size_t count);

/// A text of more than `count` characters cut to its first `count` and "..."; others as they are.
std::string truncated(std::string_view text, std::size_t count);

} // namespace cindertop
