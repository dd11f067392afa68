#include "agent/LiveProgram.h"

#include "app/HardwareProfile.h"
#include "persistence/DiagnosticLogService.h"
#include "persistence/ThermalHistoryStore.h"
#include "platform/linux/OperatingSystemVersion.h"
#include "platform/linux/SystemClock.h"

#include <filesystem>
#include <utility>

namespace cindertop::agent {

namespace {

/// Without /proc the name by which it is found.
std::filesystem::path startedAtLogin() {
    const auto program = ownProgram();
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
      loginItem_(folders.config / "autostart", startedAtLogin(), files_) {}

AppStateEnvironment LiveProgram::environment() {
    auto machine = machine_.services();
    auto pressureReader = DarwinThermalPressureReader::sharedOnFirstUse(machine.pressure, log_);
    return {.machine = std::move(machine),
            .pressureReader = std::move(pressureReader),
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
