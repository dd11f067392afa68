#pragma once

#include <cstdint>
#include <string>
#include <variant>

namespace cindertop {

/// A property as an operating system hands it over: a boolean, a whole or a floating number, or text.
using PropertyValue = std::variant<bool, std::int64_t, double, std::string>;

} // namespace cindertop
