#pragma once

#include "agent/BusMethods.h"
#include "app/AppState.h"
#include "app/Executor.h"
#include "scenario/machine/MemoryFileSystem.h"
#include "scenario/machine/ScenarioTexts.h"
#include "scenario/machine/VirtualClock.h"
#include "scenario/player/PlayedProgram.h"

#include <chrono>
#include <string>
#include <string_view>

namespace cindertop::agent {

/// The program on a scenario, in a time that passes when it is told to.
class PlayedAgent {
public:
    static constexpr std::string_view hotFrames =
        R"([{"at": 0, "thermalState": 2, "pressure": 30,
             "processes": [{"pid": 7, "longName": "encoder", "millicores": 4000}]}])";

    explicit PlayedAgent(std::string_view frames = hotFrames, std::string_view more = "")
        : scenario_(simulated::scenarioOf(frames, more)),
          clock_(scenario_->start),
          program_(scenario_, {.clock = clock_, .timers = clock_, .executor = executor_},
                   {.files = files_, .folder = "/"},
                   {.notificationAccepted = [](const auto&) {},
                    .eventLogged = [](const auto&) {},
                    .pressureLogged = [](const auto&) {}}),
          state(program_.environment()) {
        executor_.runTasks();
    }

    /// Every tick that is due until then is over.
    void passTo(std::chrono::nanoseconds sinceStart) {
        const auto end = scenario_->start + sinceStart;
        for (auto due = clock_.nextDue(); due && *due <= end; due = clock_.nextDue()) {
            clock_.advanceTo(*due);
            clock_.runNextDue();
            executor_.runTasks();
        }
        clock_.advanceTo(end);
    }

    BusActions actions() {
        return {.open = [this] { asked += "open "; }, .quit = [this] { asked += "quit "; }};
    }

    std::string asked; ///< of the actions, in order

    void runTasks() { executor_.runTasks(); }

private:
    std::shared_ptr<const simulated::Scenario> scenario_;
    simulated::VirtualClock clock_;
    InlineExecutor executor_;
    simulated::MemoryFileSystem files_;
    replay::PlayedProgram program_;

public:
    AppState state; ///< last: it goes first
};

} // namespace cindertop::agent
