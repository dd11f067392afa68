#include "context/SustainedThermalPressure.h"

namespace cindertop {

SustainedThermalPressureSnapshot::SustainedThermalPressureSnapshot(bool isSustained, Seconds activeDuration,
                                                                   std::optional<ThermalLevel> currentLevel,
                                                                   ThermalLevel thresholdLevel)
    : isSustained(isSustained),
      activeDuration(activeDuration > Seconds{0} ? activeDuration : Seconds{0}),
      currentLevel(currentLevel),
      thresholdLevel(thresholdLevel) {}

const SustainedThermalPressureSnapshot& SustainedThermalPressureSnapshot::inactive() {
    static const SustainedThermalPressureSnapshot snapshot(false, Seconds{0}, std::nullopt,
                                                           ThermalLevel::serious);
    return snapshot;
}

SustainedThermalPressureTracker::SustainedThermalPressureTracker(
    SustainedThermalPressureConfiguration configuration)
    : configuration_(configuration) {}

SustainedThermalPressureSnapshot
SustainedThermalPressureTracker::update(const std::optional<ThermalScore>& score, AwakeTime now) {
    const auto level = score.transform([](const ThermalScore& present) { return present.level; });
    if (!level || *level < configuration_.minimumLevel) {
        activeStart_.reset();
        return {false, Seconds{0}, level, configuration_.minimumLevel};
    }
    if (!activeStart_) {
        activeStart_ = now;
    }
    const Seconds duration = now - *activeStart_;
    return {duration >= configuration_.minimumDuration, duration, level, configuration_.minimumLevel};
}

void SustainedThermalPressureTracker::reset() {
    activeStart_.reset();
}

} // namespace cindertop
