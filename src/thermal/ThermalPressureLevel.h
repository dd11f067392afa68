#pragma once

#include "support/Enumeration.h"

#include <array>
#include <cstdint>

namespace cindertop {

/// How strongly the system holds its processors back because of heat.
enum class ThermalPressureLevel { nominal, moderate, heavy, critical, unavailable };

template <>
struct EnumerationTable<ThermalPressureLevel> {
    static constexpr std::array cases{
        EnumerationCase{ThermalPressureLevel::nominal, "nominal"},
        EnumerationCase{ThermalPressureLevel::moderate, "moderate"},
        EnumerationCase{ThermalPressureLevel::heavy, "heavy"},
        EnumerationCase{ThermalPressureLevel::critical, "critical"},
        EnumerationCase{ThermalPressureLevel::unavailable, "unavailable"},
    };
};

/// The level of a raw notification state. The two most severe states, 3 and 4, are both `critical`; larger
/// ones are `unavailable`.
constexpr ThermalPressureLevel fromDarwinState(std::uint64_t darwinState) {
    switch (darwinState) {
    case 0:
        return ThermalPressureLevel::nominal;
    case 1:
        return ThermalPressureLevel::moderate;
    case 2:
        return ThermalPressureLevel::heavy;
    case 3:
    case 4:
        return ThermalPressureLevel::critical;
    default:
        return ThermalPressureLevel::unavailable;
    }
}

} // namespace cindertop
