#pragma once

#include "support/Instant.h"
#include "thermal/ThermalLevel.h"

#include <optional>

namespace cindertop {

/// How long pressure has stayed at or above a level.
struct SustainedThermalPressureSnapshot {
    bool isSustained;
    Seconds activeDuration;                   ///< of the current stretch, 0 when there is none
    std::optional<ThermalLevel> currentLevel; ///< of the score just tracked; absent without one
    ThermalLevel thresholdLevel;

    /// A negative duration, or one that is no number, becomes 0.
    SustainedThermalPressureSnapshot(bool isSustained, Seconds activeDuration,
                                     std::optional<ThermalLevel> currentLevel, ThermalLevel thresholdLevel);

    /// No pressure, measured against `serious`.
    static const SustainedThermalPressureSnapshot& inactive();

    bool operator==(const SustainedThermalPressureSnapshot&) const = default;
};

} // namespace cindertop
