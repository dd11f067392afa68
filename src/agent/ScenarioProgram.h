#pragma once

#include "app/EngineThread.h"
#include "app/EventLoopTimers.h"
#include "scenario/machine/MemoryFileSystem.h"
#include "scenario/player/PlayedProgram.h"
#include "scenario/player/ScaledTime.h"

#include <functional>
#include <memory>
#include <optional>

namespace cindertop::agent {

/// Everything that the program runs on when it plays a scenario. Needs the event loop.
class ScenarioProgram {
public:
    /// Time stands still after `pauseAt` seconds of the scenario.
    ScenarioProgram(std::shared_ptr<const simulated::Scenario> scenario, double speed,
                    std::optional<double> pauseAt,
                    std::function<void(const UserNotificationRequest&)> onNotification);
    ScenarioProgram(const ScenarioProgram&) = delete;
    ScenarioProgram& operator=(const ScenarioProgram&) = delete;

    AppStateEnvironment environment() { return program_.environment(); }

    /// From now on the scenario's user acts; `onEnd` runs when the scenario is over. `state` must outlive
    /// this or have stopped its executor.
    void play(AppState& state, std::function<void()> onEnd);

private:
    std::shared_ptr<const simulated::Scenario> scenario_;
    EventLoopTimers timers_;
    replay::ScaledTime time_;
    simulated::MemoryFileSystem files_;
    EngineThread engineThread_;
    replay::PlayedProgram program_;
    std::optional<replay::ScenarioUser> user_;
};

} // namespace cindertop::agent
