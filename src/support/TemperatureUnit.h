#pragma once

#include "support/Enumeration.h"

#include <array>
#include <cstdint>

namespace cindertop {

/// The unit that a person reads temperatures in: that of the region, or one chosen whatever the region.
enum class TemperatureUnit : std::uint8_t { region, celsius, fahrenheit };

template <>
struct EnumerationTable<TemperatureUnit> {
    static constexpr std::array cases{
        EnumerationCase{TemperatureUnit::region, "region"},
        EnumerationCase{TemperatureUnit::celsius, "celsius"},
        EnumerationCase{TemperatureUnit::fahrenheit, "fahrenheit"},
    };
};

} // namespace cindertop
