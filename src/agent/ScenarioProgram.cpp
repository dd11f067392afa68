#include "agent/ScenarioProgram.h"

#include "replay/ScenarioFile.h"

#include <utility>

namespace cindertop::agent {

ScenarioProgram::ScenarioProgram(std::shared_ptr<const simulated::Scenario> scenario, double speed,
                                 std::function<void(const UserNotificationRequest&)> onNotification)
    : scenario_(std::move(scenario)),
      time_(scenario_->start, speed, timers_),
      program_(scenario_, {.clock = time_, .timers = time_, .executor = engineThread_},
               {.files = files_, .folder = "/Cindertop"},
               {.notificationAccepted = std::move(onNotification),
                .eventLogged = [](const DiagnosticLogEvent&) {},
                .pressureLogged = [](const simulated::UnifiedLogLine&) {}}) {}

void ScenarioProgram::play(AppState& state, std::function<void()> onEnd) {
    user_.emplace(state, *scenario_, time_, std::move(onEnd));
}

} // namespace cindertop::agent
