#pragma once

#include "context/SustainedThermalPressureConfiguration.h"
#include "context/SustainedThermalPressureSnapshot.h"
#include "support/Instant.h"
#include "thermal/ThermalScore.h"

#include <optional>

namespace cindertop {

/// Follows how long the level has stayed at or above a minimum. One tick below it ends the stretch.
class SustainedThermalPressureTracker {
public:
    explicit SustainedThermalPressureTracker(SustainedThermalPressureConfiguration configuration);

    /// When the clock went back behind the start of the stretch, its duration is 0 until the clock has caught
    /// up.
    SustainedThermalPressureSnapshot update(const std::optional<ThermalScore>& score, Instant now);

    /// Forgets the current stretch.
    void reset();

private:
    SustainedThermalPressureConfiguration configuration_;
    std::optional<Instant> activeStart_;
};

} // namespace cindertop
