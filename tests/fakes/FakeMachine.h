#pragma once

#include "app/MachineServices.h"
#include "fakes/FakeApplicationCatalog.h"
#include "fakes/FakeClock.h"
#include "fakes/FakeDisplayList.h"
#include "fakes/FakeHostStatistics.h"
#include "fakes/FakePowerSources.h"
#include "fakes/FakeProcessInformation.h"
#include "fakes/FakeProcessTable.h"
#include "fakes/FakeTemperatureEvents.h"
#include "fakes/FakeThermalPressureNotifications.h"
#include "fakes/FakeUnifiedLog.h"

#include <memory>

namespace cindertop::fakes {

/// A whole machine of fakes. At first it is a Mac, cool and idle, with one process and no sensors.
struct FakeMachine {
    OperatingSystem operatingSystem = OperatingSystem::mac;
    FakeClock clock;
    FakeProcessInformation process;
    std::shared_ptr<FakeThermalPressureNotifications> pressure =
        std::make_shared<FakeThermalPressureNotifications>();
    FakeTemperatureEvents temperatureEvents;
    FakeDisplayList displays;
    FakePowerSources powerSources;
    FakeHostStatistics hostStatistics;
    FakeProcessTable processes;
    FakeApplicationCatalog applications;
    LocalizedComparison comparison{"en_GB"};
    std::vector<SourceStatus> sources;
    HeatSourceSurvey* survey = nullptr;
    int sourceQuestions = 0;

    FakeMachine() { processes.add(1, "idle"); }

    MachineServices services() {
        return {.operatingSystem = operatingSystem,
                .clock = clock,
                .process = process,
                .pressureReader =
                    DarwinThermalPressureReader::ownOnFirstUse(pressure, std::make_shared<FakeUnifiedLog>()),
                .temperatureEvents = temperatureEvents,
                .displays = displays,
                .powerSources = powerSources,
                .hostStatistics = hostStatistics,
                .processes = processes,
                .applications = applications,
                .comparison = comparison,
                .sources =
                    [this] {
                        ++sourceQuestions;
                        return sources;
                    },
                .heatSourceSurvey = survey};
    }
};

} // namespace cindertop::fakes
