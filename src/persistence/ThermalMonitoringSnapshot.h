#pragma once

#include "persistence/SharedHistorySamples.h"
#include "persistence/ThermalDailySummary.h"
#include "support/Instant.h"

namespace cindertop {

/// What the history holds at a moment.
struct ThermalMonitoringSnapshot {
    SharedHistorySamples samples; ///< oldest first, all within the history's window
    ThermalDailySummary todaySummary;
    Instant measuredAt;

    /// Before the store has answered: no samples, the day "unknown", everything at the Unix epoch.
    static const ThermalMonitoringSnapshot& empty();

    bool operator==(const ThermalMonitoringSnapshot&) const = default;
};

/// Whether the day's time at its levels was measured. On a machine that tells nothing about its heat all of
/// it counts as normal, which the samples give away.
bool areLevelsMeasured(const ThermalMonitoringSnapshot& snapshot);

} // namespace cindertop
