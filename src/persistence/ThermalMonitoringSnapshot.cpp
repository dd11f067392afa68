#include "persistence/ThermalMonitoringSnapshot.h"

#include <algorithm>

namespace cindertop {

const ThermalMonitoringSnapshot& ThermalMonitoringSnapshot::empty() {
    static const ThermalMonitoringSnapshot snapshot{
        {}, ThermalDailySummary::fresh("unknown", unixEpoch), unixEpoch};
    return snapshot;
}

bool areLevelsMeasured(const ThermalMonitoringSnapshot& snapshot) {
    const auto& durations = snapshot.todaySummary.levelDurations;
    return snapshot.samples.empty() || durations.totalDuration() != durations.normal ||
           std::ranges::any_of(snapshot.samples, [](const auto& sample) { return isHeatKnown(sample); });
}

} // namespace cindertop
