#pragma once

#include "support/Instant.h"
#include "thermal/SystemThermalState.h"
#include "thermal/TemperatureReading.h"
#include "thermal/ThermalDataSource.h"
#include "thermal/ThermalPressureLevel.h"

#include <span>
#include <vector>

namespace cindertop {

/// One raw thermal sample, before scoring.
struct ThermalReading {
    SystemThermalState systemState;
    ThermalPressureLevel pressureLevel;
    std::vector<TemperatureReading> temperatures; ///< in the order in which they were gathered
    ThermalDataSource dataSource;
    Instant measuredAt;

    /// This reading with the plausible ones of the given temperatures behind its own. Without a plausible one
    /// it is unchanged, its data source included.
    ThermalReading merging(std::span<const TemperatureReading> added) const;

    bool operator==(const ThermalReading&) const = default;
};

} // namespace cindertop
