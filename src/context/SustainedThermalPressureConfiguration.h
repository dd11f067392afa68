#pragma once

#include "support/Instant.h"
#include "thermal/ThermalLevel.h"

namespace cindertop {

/// From which level, and after how long at or above it, pressure counts as sustained.
struct SustainedThermalPressureConfiguration {
    ThermalLevel minimumLevel;
    Seconds minimumDuration; ///< at least 1 second

    /// A duration below 1 second, or one that is no number, becomes 1 second.
    constexpr SustainedThermalPressureConfiguration(ThermalLevel minimumLevel, Seconds minimumDuration)
        : minimumLevel(minimumLevel),
          minimumDuration(minimumDuration >= Seconds{1} ? minimumDuration : Seconds{1}) {}

    /// `serious` for two minutes.
    static constexpr SustainedThermalPressureConfiguration defaults() {
        return {ThermalLevel::serious, Seconds{120}};
    }

    bool operator==(const SustainedThermalPressureConfiguration&) const = default;
};

} // namespace cindertop
