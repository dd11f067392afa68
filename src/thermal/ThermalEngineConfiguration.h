#pragma once

#include "thermal/ThermalTemperatureThresholds.h"

namespace cindertop {

/// What one scoring request asks for.
struct ThermalEngineConfiguration {
    bool usesExperimentalSensors; ///< read the temperature sensors too
    ThermalTemperatureThresholds thresholds;

    bool operator==(const ThermalEngineConfiguration&) const = default;
};

} // namespace cindertop
