#pragma once

#include <cstdint>
#include <string>
#include <variant>

namespace cindertop {

/// A property as an operating system hands it over: a boolean, a whole or a floating number, or text.
using PropertyValue = std::variant<bool, std::int64_t, double, std::string>;

/// A preference of the user as texts, files and buses carry it; an enumeration by the name of its case.
using PreferenceValue = std::variant<bool, std::int64_t, std::string>;

} // namespace cindertop
