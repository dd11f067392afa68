#pragma once

#include "app/AppState.h"
#include "platform/Timers.h"
#include "scenario/format/JsonTree.h"
#include "scenario/format/Scenario.h"
#include "scenario/machine/SimulatedDesktop.h"
#include "scenario/machine/SimulatedMachine.h"
#include "scenario/machine/SimulatedProcesses.h"
#include "support/FileSystem.h"

#include <cstddef>
#include <expected>
#include <filesystem>
#include <functional>
#include <memory>

namespace cindertop::replay {

/// Carries out a scenario's commands in real or scaled time, and tells when the scenario is over.
class ScenarioUser {
public:
    /// Carries out what is due already. All that is referred to must outlive this; `onEnd` runs once, later.
    ScenarioUser(AppState& state, const simulated::Scenario& scenario, Timers& timers,
                 std::function<void()> onEnd);

private:
    Instant now() const { return state_.environment().machine.clock.now(); }

    Instant end() const { return scenario_.start + scenario_.duration; }

    /// Of the next command before the end, else the end.
    Instant nextInstant() const;
    void carryOutDueCommands();
    void waitForNextInstant();
    void proceed();

    AppState& state_;
    const simulated::Scenario& scenario_;
    Timers& timers_;
    std::function<void()> onEnd_;
    std::size_t nextCommand_ = 0;
    std::unique_ptr<Timer> timer_;
};

/// Where a played program keeps its files.
struct PlayedFiles {
    FileSystem& files;
    std::filesystem::path folder;
};

/// Who is told what the program does.
struct PlayedProgramObserver {
    std::function<void(const UserNotificationRequest&)> notificationAccepted;
    std::function<void(const DiagnosticLogEvent&)> eventLogged;
    std::function<void(const simulated::UnifiedLogLine&)> pressureLogged;
};

/// Time and threads for a played program.
struct PlayedTime {
    const Clock& clock;
    Timers& timers;
    Executor& executor;
};

/// Everything that a program needs to run on a scenario instead of a machine. What it refers to must outlive
/// it, and it the program.
class PlayedProgram {
public:
    /// The preferences of the scenario are in force when the program starts.
    PlayedProgram(std::shared_ptr<const simulated::Scenario> scenario, const PlayedTime& time,
                  PlayedFiles files, PlayedProgramObserver observer);
    PlayedProgram(const PlayedProgram&) = delete;
    PlayedProgram& operator=(const PlayedProgram&) = delete;

    /// What an AppState is made from.
    AppStateEnvironment environment();

    /// Does what the scenario's user does.
    static void carryOut(AppState& state, const simulated::ScenarioCommand& command);

private:
    std::shared_ptr<const simulated::Scenario> scenario_;
    PlayedTime time_;
    PlayedFiles files_;
    PlayedProgramObserver observer_;
    simulated::SimulatedMachine machine_;
    simulated::SimulatedUserDefaults defaults_;
    simulated::SimulatedNotificationCenter notificationCenter_;
    simulated::SimulatedLoginItem loginItem_;
    simulated::SimulatedRunningApplications runningApplications_;
    std::shared_ptr<simulated::CapturingUnifiedLog> pressureLog_;
    SilentUnifiedLog diagnosticLog_; ///< what is logged shows as events already
};

/// Checks what the format leaves to the program: whether the preferences of the scenario exist and take the
/// values.
std::expected<void, simulated::ScenarioError> checkPreferences(const simulated::Scenario& scenario);

} // namespace cindertop::replay
