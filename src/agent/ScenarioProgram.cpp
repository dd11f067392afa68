#include "agent/ScenarioProgram.h"

#include "scenario/player/ScenarioFile.h"

#include <utility>

namespace cindertop::agent {

namespace {

Instant lastInstant(const simulated::Scenario& scenario, std::optional<double> pauseAt) {
    const auto end = scenario.start + scenario.duration;
    if (!pauseAt) {
        return Instant::max();
    }
    const auto pause = Seconds(*pauseAt);
    // Later than the end it would never come, and the end would.
    return pause < Seconds(scenario.duration)
               ? scenario.start + std::chrono::duration_cast<std::chrono::nanoseconds>(pause)
               : end;
}

} // namespace

ScenarioProgram::ScenarioProgram(std::shared_ptr<const simulated::Scenario> scenario, double speed,
                                 std::optional<double> pauseAt,
                                 std::function<void(const UserNotificationRequest&)> onNotification)
    : scenario_(std::move(scenario)),
      time_(scenario_->start, speed, timers_, lastInstant(*scenario_, pauseAt)),
      program_(scenario_, {.clock = time_, .timers = time_, .executor = engineThread_},
               {.files = files_, .folder = "/Cindertop"},
               {.notificationAccepted = std::move(onNotification),
                .eventLogged = [](const DiagnosticLogEvent&) {},
                .pressureLogged = [](const simulated::UnifiedLogLine&) {}}) {}

void ScenarioProgram::play(AppState& state, std::function<void()> onEnd) {
    user_.emplace(state, *scenario_, time_, std::move(onEnd));
}

} // namespace cindertop::agent
