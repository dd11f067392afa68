#pragma once

#include "app/AppState.h"
#include "platform/UserNotificationCenter.h"
#include "report/Json.h"
#include "scenario/machine/SimulatedDesktop.h"
#include "scenario/player/PlayedProgram.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace cindertop::replay {

/// Reports what a played program does, one JSON object a line.
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
    Instant start_;
    std::function<void(std::string)> write_;
    std::int64_t ticks_ = 0;
    std::int64_t samples_ = 0;
    std::int64_t notifications_ = 0;
};

/// Plays a scenario to the program in virtual time, as fast as it goes, and reports what it does line by
/// line. Stops after `duration` of virtual time, or at the scenario's end if that comes first. The same
/// scenario always gives the same lines.
void replay(const std::shared_ptr<const simulated::Scenario>& scenario, std::chrono::nanoseconds duration,
            const PlayedFiles& files, const std::function<void(std::string)>& writeLine);

} // namespace cindertop::replay
