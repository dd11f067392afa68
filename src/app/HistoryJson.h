#pragma once

#include "app/SnapshotJson.h"
#include "persistence/ThermalHistory.h"

namespace cindertop {

/// The history as JSON; instants are seconds since `start`.
class HistoryJson {
public:
    explicit HistoryJson(Instant start) : snapshots_(start) {}

    Json sample(const ThermalHistorySample& sample) const;
    Json summary(const ThermalDailySummary& summary) const;
    /// All samples and the summary of the day.
    Json snapshot(const ThermalMonitoringSnapshot& snapshot) const;

private:
    SnapshotJson snapshots_;
};

} // namespace cindertop
