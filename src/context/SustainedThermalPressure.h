#pragma once

#include "support/Instant.h"
#include "thermal/ThermalLevel.h"
#include "thermal/ThermalScore.h"

#include <optional>

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

/// Follows how long the level has stayed at or above a minimum. One tick below it ends the stretch.
class SustainedThermalPressureTracker {
public:
    explicit SustainedThermalPressureTracker(SustainedThermalPressureConfiguration configuration);

    SustainedThermalPressureSnapshot update(const std::optional<ThermalScore>& score, AwakeTime now);

    /// Forgets the current stretch.
    void reset();

private:
    SustainedThermalPressureConfiguration configuration_;
    std::optional<AwakeTime> activeStart_;
};

} // namespace cindertop
