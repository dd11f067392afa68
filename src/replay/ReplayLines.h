#pragma once

#include "app/AppState.h"
#include "app/HistoryJson.h"
#include "app/SnapshotJson.h"
#include "platform/UserNotificationRequest.h"
#include "platform/simulated/CapturingUnifiedLog.h"

#include <cstdint>
#include <functional>
#include <string>

namespace cindertop::replay {

/// Tells what a played program does, one JSON object a line.
class ReplayLines {
public:
    /// `write` gets each line without its end; instants in it are seconds since `start`.
    ReplayLines(const Clock& clock, Instant start, std::function<void(std::string)> write);

    void tick(const AppState& state);
    void history(const ThermalHistorySample& sample, const ThermalMonitoringSnapshot& result);
    void notification(const UserNotificationRequest& request);
    void log(const DiagnosticLogEvent& event);
    void unifiedLog(const simulated::UnifiedLogLine& logged);
    /// The last line.
    void end();

private:
    Json line(const char* event) const;

    const Clock& clock_;
    SnapshotJson snapshots_;
    HistoryJson histories_;
    std::function<void(std::string)> write_;
    std::int64_t ticks_ = 0;
    std::int64_t samples_ = 0;
    std::int64_t notifications_ = 0;
};

} // namespace cindertop::replay
