#pragma once

#include <optional>
#include <string_view>

namespace cindertop::linux_platform {

/// Matches a whole text against patterns: "*" is any text, "#" a decimal number, "|" stands between
/// alternatives; letter case does not count. Gives the number that the last "#" stands for, empty without
/// "#"; none when nothing matches.
std::optional<std::string_view> matchPattern(std::string_view alternatives, std::string_view text);

/// The digits at the end of a text: "12" of "cpu12"; empty without any.
std::string_view trailingDigits(std::string_view text);

/// The last number in a text: "3" of "gpuss-3-top"; empty without any.
std::string_view lastNumber(std::string_view text);

} // namespace cindertop::linux_platform
