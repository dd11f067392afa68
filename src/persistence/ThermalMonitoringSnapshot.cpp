#include "persistence/ThermalMonitoringSnapshot.h"

namespace cindertop {

const ThermalMonitoringSnapshot& ThermalMonitoringSnapshot::empty() {
    static const ThermalMonitoringSnapshot snapshot{
        {}, ThermalDailySummary::fresh("unknown", unixEpoch), unixEpoch};
    return snapshot;
}

} // namespace cindertop
