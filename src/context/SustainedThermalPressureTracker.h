#pragma once

#include "context/SustainedThermalPressureConfiguration.h"
#include "context/SustainedThermalPressureSnapshot.h"
#include "support/AwakeTime.h"
#include "thermal/ThermalScore.h"

#include <optional>

namespace cindertop {

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
