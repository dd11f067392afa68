#pragma once

#include "context/SystemContextSnapshot.h"
#include "cpu/ProcessOffenderSnapshot.h"
#include "platform/SourceStatus.h"
#include "support/Instant.h"
#include "thermal/TemperatureReading.h"
#include "thermal/ThermalScore.h"

#include <optional>
#include <vector>

namespace cindertop {

/// All that is known about a machine after one tick.
struct MachineSnapshot {
    ThermalScore score;
    SystemContextSnapshot context;
    ProcessOffenderSnapshot offenders;            ///< of the latest census, which may be some ticks old
    std::optional<double> cpuPercent;             ///< of the whole machine since the tick before, 0 to 100
    std::vector<TemperatureReading> temperatures; ///< every sensor that answered, in the system's order
    std::vector<SourceStatus> sources;            ///< as of the latest census
    Instant measuredAt;                           ///< of the tick

    bool operator==(const MachineSnapshot&) const = default;
};

} // namespace cindertop
