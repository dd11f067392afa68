#pragma once

#include "app/DeploymentFile.h"
#include "app/Executor.h"
#include "app/UpdateService.h"
#include "app/Windows.h"
#include "persistence/DiagnosticLogEvent.h"
#include "persistence/ThermalHistoryStore.h"
#include "platform/Desktop.h"
#include "platform/LoginItem.h"
#include "platform/Machine.h"
#include "platform/RunningApplications.h"
#include "platform/SleepAnnouncements.h"
#include "platform/SystemValues.h"
#include "platform/Timers.h"
#include "platform/UnifiedLog.h"
#include "platform/UserDefaults.h"
#include "platform/UserNotificationCenter.h"
#include "support/DateText.h"
#include "support/FileSystem.h"
#include "support/TemperatureText.h"
#include "thermal/ThermalProviders.h"

#include <filesystem>
#include <functional>
#include <string>

namespace cindertop {

/// What the program works with. All that is referred to outlives the AppState; the services of the machine
/// are asked by the executor's work only, everything else by the main thread.
struct AppStateEnvironment {
    Machine machine;
    DarwinThermalPressureReader::Source pressureReader;
    Timers& timers;
    Executor& executor;
    const SystemValues& systemValues;
    UserDefaults& defaults;
    FileSystem& files;
    UnifiedLog& unifiedLog;
    UserNotificationCenter& notificationCenter;
    LoginItem& loginItem;
    RunningApplications& runningApplications;
    CalendarDays calendar;
    TemperatureFormatter temperatures;
    std::filesystem::path historyFile;
    std::filesystem::path diagnosticFile;
    DeploymentFile deployment;
    std::string architecture;            ///< of the processor that the program was built for
    std::string operatingSystemVersion;  ///< for exports
    std::string releasesPage;            ///< what to open where no update feed is configured
    Desktop* desktop = nullptr;          ///< none without a display
    Windows* windows = nullptr;          ///< none without a display
    UpdateService* updates = nullptr;    ///< none where none is configured
    HistoryWriting historyWriting{};     ///< each sample at once unless told otherwise
    SleepAnnouncements* sleep = nullptr; ///< none where sleep is not announced
    std::function<void(const DiagnosticLogEvent&)>
        diagnosticObserver{}; ///< told of each event that is logged
};

} // namespace cindertop
