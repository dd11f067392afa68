#include "cli/UserCommands.h"

#include "app/HardwareProfile.h"
#include "cli/AgentClient.h"
#include "cli/AgentCommands.h"
#include "cli/StoredCommands.h"
#include "persistence/DiagnosticLogService.h"
#include "persistence/ThermalHistoryStore.h"
#include "platform/linux/AgentLock.h"
#include "platform/linux/LinuxSystemValues.h"
#include "platform/linux/OperatingSystemVersion.h"
#include "platform/linux/PropertyListUserDefaults.h"
#include "platform/linux/SystemClock.h"
#include "support/FileSystem.h"
#include "support/UserFolders.h"

#include <string>
#include <system_error>

namespace cindertop::cli {

namespace {

using linux_platform::PropertyListUserDefaults;

/// An agent that is not on this session's bus holds the lock all the same.
CommandResult whileNoAgentRuns(const std::function<void()>& action) {
    const auto folder = UserFolders::ofUser().programData();
    const auto lock = linux_platform::AgentLock::tryAcquire(folder);
    if (!lock && lock.error() == std::errc::device_or_resource_busy) {
        return std::unexpected(std::string(unreachableAgent));
    }
    if (!lock) {
        return std::unexpected("cannot use " + folder.string() + ": " +
                               std::make_error_code(lock.error()).message());
    }
    action();
    return {};
}

/// What the command had to do with it was done as well as it could be.
void reportProblem(PropertyListUserDefaults& defaults) {
    if (const auto problem = defaults.takeProblem()) {
        reportError(*problem);
    }
}

ExitStatus exitStatusOf(const PageResult& result) {
    if (!result) {
        reportError(result.error());
        return failure;
    }
    return exitStatus(*result);
}

/// Makes the agent write what it holds; false without an agent or when that fails.
bool saveHistory(std::optional<AgentClient>& agent) {
    if (!agent) {
        return false;
    }
    const auto saved = agent->call("SaveHistory");
    if (!saved) {
        reportError("the agent cannot write its latest samples: " + saved.error());
    }
    return saved.has_value();
}

} // namespace

ExitStatus showStoredThings(const Arguments& arguments, Output& output, std::optional<AgentClient>& agent) {
    const bool isHistorySaved = arguments.command == Command::history && saveHistory(agent);
    PosixFileSystem files;
    PropertyListUserDefaults defaults(PropertyListUserDefaults::defaultFile(), files);
    const linux_platform::LinuxSystemValues systemValues;
    const StoredEnvironment environment{
        .files = files,
        .defaults = defaults,
        .systemValues = systemValues,
        .output = output,
        .terminal = [&output] { return traitsOf(readTerminalFacts(output.descriptor())); },
        .temperatures = TemperatureFormatter::ofUser(),
        .comparison = LocalizedComparison::ofUser(),
        .calendar = CalendarDays::ofUser(),
        .now = linux_platform::SystemClock().now(),
        .historyFile = ThermalHistoryStore::defaultFile(),
        .diagnosticFile = DiagnosticLogService::defaultFile(),
        .deploymentFile = DeploymentFile::defaultFile(),
        .circumstances = {.launchAtLoginStatus = "Unknown", // only the agent asks the desktop
                          .operatingSystem = linux_platform::operatingSystem,
                          .operatingSystemVersion = linux_platform::operatingSystemVersion(),
                          .architecture = std::string(builtArchitecture())}};
    const auto status = arguments.command == Command::history
                            ? exitStatus(showHistory(environment, arguments.format, isHistorySaved))
                            : exitStatus(exportDiagnostics(environment, arguments.operands.front()));
    reportProblem(defaults);
    return status;
}

ExitStatus steer(const Arguments& arguments, Output& output, std::optional<AgentClient>& agent) {
    PosixFileSystem files;
    PropertyListUserDefaults defaults(PropertyListUserDefaults::defaultFile(), files);
    AgentEnvironment environment{
        .agent = agent,
        .defaults = defaults,
        .standard = defaultSettings(linux_platform::operatingSystem),
        .output = output,
        .terminal = [&output] { return traitsOf(readTerminalFacts(output.descriptor())); },
        .whileAlone = whileNoAgentRuns,
        .whyNoAgent = whyNoAgent};
    switch (arguments.command) {
    case Command::pause:
        return exitStatus(pauseAgent(environment));
    case Command::resume:
        return exitStatus(resumeAgent(environment));
    case Command::quit:
        return exitStatus(quitAgent(environment));
    default:
        break;
    }
    const auto status =
        exitStatusOf(arguments.command == Command::acceptTerms ? acceptTerms(environment)
                                                               : settings(environment, arguments));
    if (agent) { // its own copy counts
        return status;
    }
    reportProblem(defaults);
    if (!defaults.isStored()) {
        reportError("the change cannot be kept");
        return failure;
    }
    return status;
}

} // namespace cindertop::cli
