#include "agent/LiveProgram.h"

#include "app/HardwareProfile.h"
#include "persistence/DiagnosticLogService.h"
#include "persistence/ThermalHistoryStore.h"
#include "platform/linux/OperatingSystemVersion.h"
#include "platform/linux/SystemClock.h"

#include <filesystem>
#include <system_error>

namespace cindertop::agent {

namespace {

/// The file that runs; without /proc the name by which it is found.
std::filesystem::path ownProgram() {
    std::error_code ignored;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", ignored);
    return program.empty() ? std::filesystem::path("cindertop") : program;
}

} // namespace

LiveProgram::LiveProgram(const UserFolders& folders, UserDefaults& defaults,
                         UserNotificationCenter& notificationCenter, const linux_platform::Roots& roots)
    : folders_(folders),
      defaults_(defaults),
      notificationCenter_(notificationCenter),
      log_(std::make_shared<linux_platform::JournalUnifiedLog>()),
      machine_(roots),
      systemValues_(roots),
      loginItem_(folders.config / "autostart", ownProgram(), files_) {}

AppStateEnvironment LiveProgram::environment() {
    return {.machine = {.operatingSystem = linux_platform::operatingSystem,
                        .clock = machine_.clock(),
                        .process = machine_.processInformation(),
                        .pressureReader =
                            DarwinThermalPressureReader::sharedOnFirstUse(machine_.thermalPressure(), log_),
                        .temperatureEvents = machine_.temperatureEvents(),
                        .displays = machine_.displays(),
                        .powerSources = machine_.powerSources(),
                        .hostStatistics = machine_.hostStatistics(),
                        .processes = machine_.processes(),
                        .applications = machine_.applications(),
                        .comparison = LocalizedComparison::ofUser(),
                        .sources = [this] { return machine_.sources(); },
                        .heatSourceSurvey = &machine_.heatSourceSurvey()},
            .timers = timers_,
            .executor = engineThread_,
            .systemValues = systemValues_,
            .defaults = defaults_,
            .files = files_,
            .unifiedLog = *log_,
            .notificationCenter = notificationCenter_,
            .loginItem = loginItem_,
            .runningApplications = runningApplications_,
            .calendar = CalendarDays::ofUser(),
            .temperatures = TemperatureFormatter::ofUser(),
            .historyFile = folders_.programData() / ThermalHistoryStore::defaultFile().filename(),
            .diagnosticFile = folders_.programData() / DiagnosticLogService::defaultFile().filename(),
            .deployment = DeploymentFile(files_, DeploymentFile::defaultFile()),
            .architecture = std::string(builtArchitecture()),
            .operatingSystemVersion = linux_platform::operatingSystemVersion(),
            .releasesPage = {},
            .historyWriting = {.clock = linux_platform::steadyClock()},
            .sleep = &sleep_.announcements()};
}

} // namespace cindertop::agent
