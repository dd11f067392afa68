#include "context/SustainedThermalPressureSnapshot.h"

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

} // namespace cindertop
