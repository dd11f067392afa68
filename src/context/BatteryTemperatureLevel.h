#pragma once

#include "support/Enumeration.h"

#include <array>

namespace cindertop {

/// How warm the battery is. Ordered: `normal` is the least.
enum class BatteryTemperatureLevel : int { normal, warm, high };

template <>
struct EnumerationTable<BatteryTemperatureLevel> {
    static constexpr std::array cases{
        EnumerationCase{BatteryTemperatureLevel::normal, "normal", 0},
        EnumerationCase{BatteryTemperatureLevel::warm, "warm", 1},
        EnumerationCase{BatteryTemperatureLevel::high, "high", 2},
    };
};

/// `warm` from 35 degrees, `high` from 40.
constexpr BatteryTemperatureLevel batteryTemperatureLevelFor(double celsius) {
    if (celsius >= 40) {
        return BatteryTemperatureLevel::high;
    }
    return celsius >= 35 ? BatteryTemperatureLevel::warm : BatteryTemperatureLevel::normal;
}

} // namespace cindertop
