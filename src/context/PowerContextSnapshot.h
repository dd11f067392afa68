#pragma once

#include "context/BatteryTemperatureLevel.h"
#include "context/PowerSourceKind.h"

#include <optional>

namespace cindertop {

/// What powers the machine, and how its battery fares.
struct PowerContextSnapshot {
    bool isAvailable; ///< a battery was found
    PowerSourceKind source;
    std::optional<int> batteryLevelPercent; ///< 0 to 100
    std::optional<bool> isCharging;
    std::optional<bool> isFullyCharged;
    bool isLowPowerModeEnabled;
    std::optional<double> batteryTemperatureCelsius;
    std::optional<BatteryTemperatureLevel> batteryTemperatureLevel;

    /// A percentage outside 0 to 100 becomes the nearer bound.
    PowerContextSnapshot(bool isAvailable, PowerSourceKind source, std::optional<int> batteryLevelPercent,
                         std::optional<bool> isCharging, std::optional<bool> isFullyCharged,
                         bool isLowPowerModeEnabled, std::optional<double> batteryTemperatureCelsius,
                         std::optional<BatteryTemperatureLevel> batteryTemperatureLevel);

    /// Nothing is known: no battery, source `unknown`, Low Power Mode off.
    static const PowerContextSnapshot& unavailable();

    bool isExternalPowerConnected() const;

    bool operator==(const PowerContextSnapshot&) const = default;
};

} // namespace cindertop
