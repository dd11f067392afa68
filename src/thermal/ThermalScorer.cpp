#include "thermal/ThermalScorer.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace cindertop {

namespace {

constexpr int fairPoints = 25;
constexpr int seriousPoints = 60;
constexpr int criticalPoints = 95;
constexpr int highestPoints = 100;
constexpr double criticalBandWidth =
    15;                      ///< degrees above the critical threshold that lead to the highest points
constexpr int trendStep = 5; ///< a smaller change of points is no trend
constexpr int risingBonus = 3;

struct LevelBand {
    int below;
    ThermalLevel level;
    bool shouldTriggerEffects;
    double samplingHz;
};

// NOLINTBEGIN(modernize-use-designated-initializers): the columns are named above
constexpr std::array levelBands{
    LevelBand{fairPoints, ThermalLevel::normal, false, 0.5},
    LevelBand{seriousPoints, ThermalLevel::fair, false, 1},
    LevelBand{90, ThermalLevel::serious, true, 5},
    LevelBand{highestPoints + 1, ThermalLevel::critical, true, 5},
};

// NOLINTEND(modernize-use-designated-initializers)

const LevelBand& bandOf(int points) {
    return *std::ranges::find_if(levelBands, [points](const LevelBand& band) { return points < band.below; });
}

std::optional<int> pointsOf(SystemThermalState state) {
    switch (state) {
    case SystemThermalState::nominal:
        return 8;
    case SystemThermalState::fair:
        return 35;
    case SystemThermalState::serious:
        return 75;
    case SystemThermalState::critical:
        return 95;
    case SystemThermalState::unavailable:
        break;
    }
    return std::nullopt;
}

std::optional<int> pointsOf(ThermalPressureLevel level) {
    switch (level) {
    case ThermalPressureLevel::nominal:
        return 8;
    case ThermalPressureLevel::moderate:
        return 35;
    case ThermalPressureLevel::heavy:
        return 75;
    case ThermalPressureLevel::critical:
        return 95;
    case ThermalPressureLevel::unavailable:
        break;
    }
    return std::nullopt;
}

bool areUsable(const ThermalTemperatureThresholds& thresholds) {
    return std::isfinite(thresholds.fair) && std::isfinite(thresholds.serious) &&
           std::isfinite(thresholds.critical) && thresholds.fair > 0;
}

/// `ratio` of `whole`, to the nearest integer, halves away from zero; never below 0 or above `whole`.
int share(double ratio, int whole) {
    return static_cast<int>(std::lround(std::clamp(ratio, 0.0, 1.0) * whole));
}

ThermalTrend trendOf(int points, const std::optional<ThermalScore>& previousScore) {
    const int delta = previousScore ? points - previousScore->score : 0;
    if (delta >= trendStep) {
        return ThermalTrend::rising;
    }
    return delta <= -trendStep ? ThermalTrend::cooling : ThermalTrend::stable;
}

int withRisingBonus(int points, ThermalTrend trend) {
    if (trend != ThermalTrend::rising || points < fairPoints) {
        return points;
    }
    return std::min(points + risingBonus, highestPoints);
}

double effectIntensity(int points, const LevelBand& band) {
    return band.shouldTriggerEffects ? std::max(std::min((points - seriousPoints) / 40.0, 1.0), 0.15) : 0.0;
}

} // namespace

ThermalScore ThermalScorer::score(const ThermalReading& reading,
                                  const std::optional<ThermalScore>& previousScore,
                                  const ThermalEngineConfiguration& configuration) const {
    const auto temperature = representativeTemperature(reading.temperatures);
    const int rawPoints =
        basis(reading.systemState, reading.pressureLevel, temperature, configuration.thresholds).points;
    const auto trend = trendOf(rawPoints, previousScore);
    const int points = withRisingBonus(rawPoints, trend);
    const auto& band = bandOf(points);
    return {points,
            band.level,
            effectIntensity(points, band),
            band.shouldTriggerEffects,
            band.samplingHz,
            temperature,
            reading.dataSource,
            reading.systemState,
            reading.pressureLevel,
            trend,
            reading.measuredAt};
}

/// Pressure is the finer measure: where there is one it replaces the state, even when it says less. A
/// temperature decides where it says more.
ThermalScoreSteps ThermalScorer::basis(SystemThermalState state, ThermalPressureLevel pressure,
                                       std::optional<double> temperature,
                                       const ThermalTemperatureThresholds& thresholds) {
    ThermalScoreSteps steps;
    if (const auto points = pointsOf(pressure)) {
        steps = {.basis = ThermalScoreBasis::pressure, .points = *points};
    } else if (const auto statePoints = pointsOf(state)) {
        steps = {.basis = ThermalScoreBasis::state, .points = *statePoints};
    }
    if (temperature) {
        const int points = temperatureScore(*temperature, thresholds);
        if (points > steps.points || steps.basis == ThermalScoreBasis::nothing) {
            steps = {.basis = ThermalScoreBasis::temperature, .points = points};
        }
    }
    return steps;
}

ThermalScoreSteps ThermalScorer::steps(const ThermalScore& score,
                                       const ThermalTemperatureThresholds& thresholds) {
    auto steps = basis(score.systemState, score.pressureLevel, score.temperatureCelsius, thresholds);
    steps.risingBonus = withRisingBonus(steps.points, score.trend) - steps.points;
    return steps;
}

std::optional<double>
ThermalScorer::representativeTemperature(std::span<const TemperatureReading> temperatures) {
    std::optional<double> hottest;
    for (const auto& reading : temperatures) {
        if (reading.isPlausible() && tellsProcessorHeat(reading.kind)) {
            hottest = std::max(hottest.value_or(reading.celsius), reading.celsius);
        }
    }
    return hottest;
}

/// Each band is asked only for temperatures inside it, so its width is never zero. Thresholds that make no
/// scale give no points.
int ThermalScorer::temperatureScore(double celsius, const ThermalTemperatureThresholds& thresholds) {
    const auto& [fair, serious, critical] = thresholds;
    if (!areUsable(thresholds)) {
        return 0;
    }
    if (celsius >= critical) {
        return criticalPoints +
               share((celsius - critical) / criticalBandWidth, highestPoints - criticalPoints);
    }
    if (celsius >= serious) {
        return seriousPoints +
               share((celsius - serious) / (critical - serious), criticalPoints - seriousPoints);
    }
    if (celsius >= fair) {
        return fairPoints + share((celsius - fair) / (serious - fair), seriousPoints - fairPoints);
    }
    return share(celsius / fair, fairPoints - 1);
}

} // namespace cindertop
