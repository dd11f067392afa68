#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace cindertop {

/// The name of an offender, without the path or the prefix before a colon that it may come with: trimmed, the
/// part behind the last "/", "\" or ":", at most 48 characters. Absent when only blanks are given; a text
/// that ends with a separator gives an empty label.
std::optional<std::string> sanitizedLabel(std::string_view label);

/// Trimmed, at most 128 characters; absent when it is empty or has any other character than ASCII letters,
/// digits,
/// ".", "_" and "-".
std::optional<std::string> sanitizedBundleIdentifier(std::string_view identifier);

} // namespace cindertop
