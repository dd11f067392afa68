#include "thermal/ThermalScore.h"

#include <algorithm>

namespace cindertop {

namespace {

/// `std::max` answers its first argument when the second is no number.
double limited(double value, double lowest, double highest) {
    return std::min(std::max(lowest, value), highest);
}

} // namespace

ThermalScore::ThermalScore(int score, ThermalLevel level, double effectIntensity, bool shouldTriggerEffects,
                           double recommendedSamplingHz, std::optional<double> temperatureCelsius,
                           ThermalDataSource dataSource, SystemThermalState systemState,
                           ThermalPressureLevel pressureLevel, ThermalTrend trend, Instant measuredAt)
    : score(std::clamp(score, 0, 100)),
      level(level),
      effectIntensity(limited(effectIntensity, 0, 1)),
      shouldTriggerEffects(shouldTriggerEffects),
      recommendedSamplingHz(limited(recommendedSamplingHz, 0.2, 5)),
      temperatureCelsius(temperatureCelsius),
      dataSource(dataSource),
      systemState(systemState),
      pressureLevel(pressureLevel),
      trend(trend),
      measuredAt(measuredAt) {}

bool isHeatKnown(const ThermalScore& score) {
    return score.systemState != SystemThermalState::unavailable ||
           score.pressureLevel != ThermalPressureLevel::unavailable || score.temperatureCelsius;
}

} // namespace cindertop
