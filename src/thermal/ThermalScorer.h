#pragma once

#include "thermal/ThermalReading.h"
#include "thermal/ThermalScore.h"

#include <array>
#include <optional>
#include <span>

namespace cindertop {

/// The sensor temperatures, in degrees Celsius, at which the score enters the fair, serious and critical
/// bands.
struct ThermalTemperatureThresholds {
    double fair;
    double serious;
    double critical;

    static constexpr ThermalTemperatureThresholds defaults() {
        return {.fair = 85, .serious = 108, .critical = 115};
    }

    bool operator==(const ThermalTemperatureThresholds&) const = default;
};

/// What one scoring request asks for.
struct ThermalEngineConfiguration {
    bool usesExperimentalSensors; ///< read the temperature sensors too
    ThermalTemperatureThresholds thresholds;

    bool operator==(const ThermalEngineConfiguration&) const = default;
};

/// What decided a score.
enum class ThermalScoreBasis { nothing, state, pressure, temperature };

template <>
struct EnumerationTable<ThermalScoreBasis> {
    static constexpr std::array cases{
        EnumerationCase{ThermalScoreBasis::nothing, "nothing"},
        EnumerationCase{ThermalScoreBasis::state, "state"},
        EnumerationCase{ThermalScoreBasis::pressure, "pressure"},
        EnumerationCase{ThermalScoreBasis::temperature, "temperature"},
    };
};

/// How the points of a score came about: those of its basis, and what rising adds.
struct ThermalScoreSteps {
    ThermalScoreBasis basis = ThermalScoreBasis::nothing;
    int points = 0;
    int risingBonus = 0;

    bool operator==(const ThermalScoreSteps&) const = default;
};

/// Decides how hot the machine is. A pure function: the memory of the previous score lives in the engine.
class ThermalScorer {
public:
    /// Never fails: what is missing gives no points. `previousScore` is the one that the trend is measured
    /// against; of the configuration only the thresholds count.
    ThermalScore score(const ThermalReading& reading, const std::optional<ThermalScore>& previousScore,
                       const ThermalEngineConfiguration& configuration) const;

    /// The steps that led to a score of these thresholds.
    static ThermalScoreSteps steps(const ThermalScore& score, const ThermalTemperatureThresholds& thresholds);

private:
    static ThermalScoreSteps basis(SystemThermalState state, ThermalPressureLevel pressure,
                                   std::optional<double> temperature,
                                   const ThermalTemperatureThresholds& thresholds);
    static std::optional<double> representativeTemperature(std::span<const TemperatureReading> temperatures);
    static int temperatureScore(double celsius, const ThermalTemperatureThresholds& thresholds);
};

} // namespace cindertop
