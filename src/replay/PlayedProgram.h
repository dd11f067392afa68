#pragma once

#include "app/AppState.h"
#include "platform/Timers.h"
#include "platform/simulated/CapturingUnifiedLog.h"
#include "platform/simulated/Scenario.h"
#include "platform/simulated/ScenarioError.h"
#include "platform/simulated/SimulatedLoginItem.h"
#include "platform/simulated/SimulatedMachine.h"
#include "platform/simulated/SimulatedNotificationCenter.h"
#include "platform/simulated/SimulatedRunningApplications.h"
#include "platform/simulated/SimulatedUserDefaults.h"
#include "support/FileSystem.h"
#include "support/LocalizedComparison.h"

#include <expected>
#include <filesystem>
#include <functional>
#include <memory>

namespace cindertop::replay {

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
    LocalizedComparison comparison_;
    simulated::SimulatedMachine machine_;
    simulated::SimulatedUserDefaults defaults_;
    simulated::SimulatedNotificationCenter notificationCenter_;
    simulated::SimulatedLoginItem loginItem_;
    simulated::SimulatedRunningApplications runningApplications_;
    std::shared_ptr<simulated::CapturingUnifiedLog> pressureLog_;
    simulated::CapturingUnifiedLog diagnosticLog_; ///< what is logged shows as events already
};

/// Checks what the format leaves to the program: whether the preferences of the scenario exist and take the
/// values.
std::expected<void, simulated::ScenarioError> checkPreferences(const simulated::Scenario& scenario);

} // namespace cindertop::replay
