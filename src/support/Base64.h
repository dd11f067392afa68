#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace cindertop {

std::string base64Text(std::span<const std::byte> bytes);

/// The bytes; blanks and line ends between the letters do not count. None for other characters, a wrong
/// length, misplaced padding or bits that belong to no byte.
std::optional<std::vector<std::byte>> parseBase64(std::string_view text);

} // namespace cindertop
