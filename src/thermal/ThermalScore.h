#pragma once

#include "support/Enumeration.h"
#include "support/Instant.h"
#include "thermal/ThermalLevel.h"
#include "thermal/ThermalReading.h"

#include <array>
#include <optional>

namespace cindertop {

/// How the score moved since the one before.
enum class ThermalTrend { stable, rising, cooling };

template <>
struct EnumerationTable<ThermalTrend> {
    static constexpr std::array cases{
        EnumerationCase{ThermalTrend::stable, "stable"},
        EnumerationCase{ThermalTrend::rising, "rising"},
        EnumerationCase{ThermalTrend::cooling, "cooling"},
    };
};

/// How hot the machine is, with what the rest of the program derives from it.
struct ThermalScore {
    int score; ///< heat points, 0 to 100
    ThermalLevel level;
    double effectIntensity; ///< strength of the heat presentation, 0 to 1
    bool shouldTriggerEffects;
    double recommendedSamplingHz;             ///< how often to sample next, 0.2 to 5
    std::optional<double> temperatureCelsius; ///< the hottest usable sensor; absent without one
    ThermalDataSource dataSource;
    SystemThermalState systemState;
    ThermalPressureLevel pressureLevel;
    ThermalTrend trend;
    Instant measuredAt;

    /// Numbers outside their range become its nearer bound; what is no number becomes the lower bound.
    ThermalScore(int score, ThermalLevel level, double effectIntensity, bool shouldTriggerEffects,
                 double recommendedSamplingHz, std::optional<double> temperatureCelsius,
                 ThermalDataSource dataSource, SystemThermalState systemState,
                 ThermalPressureLevel pressureLevel, ThermalTrend trend, Instant measuredAt);

    bool operator==(const ThermalScore&) const = default;
};

/// Whether the machine reports its heat at all. If not, the score of 0 is no measurement.
bool isHeatKnown(const ThermalScore& score);

} // namespace cindertop
