#pragma once

#include "fakes/FakeApplicationCatalog.h"
#include "fakes/FakeClock.h"
#include "fakes/FakeDisplayList.h"
#include "fakes/FakeGraphicsUsage.h"
#include "fakes/FakeHostStatistics.h"
#include "fakes/FakePowerSources.h"
#include "fakes/FakeProcessInformation.h"
#include "fakes/FakeProcessTable.h"
#include "fakes/FakeTemperatureEvents.h"
#include "fakes/FakeThermalPressureNotifications.h"
#include "fakes/FakeUnifiedLog.h"
#include "platform/Machine.h"
#include "thermal/ThermalProviders.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cindertop::fakes {

/// Facts about a machine that a test writes down.
class FakeSystemValues final : public SystemValues {
public:
    std::map<std::string, std::string, std::less<>> texts{{"hw.model", "Mac14,2"},
                                                          {"machdep.cpu.brand_string", "Apple M2"}};

    std::optional<std::string> text(std::string_view name) const override {
        const auto found = texts.find(name);
        return found == texts.end() ? std::nullopt : std::optional(found->second);
    }
};

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
    FakeSystemValues systemValues;
    LocalizedComparison comparison{"en_GB"};
    std::vector<SourceStatus> sources;
    HeatSourceSurvey* survey = nullptr;
    FakeGraphicsUsage graphics;
    int sourceQuestions = 0;

    FakeMachine() { processes.add(1, "idle"); }

    Machine services() {
        return {.operatingSystem = operatingSystem,
                .clock = clock,
                .process = process,
                .pressure = pressure,
                .temperatureEvents = temperatureEvents,
                .displays = displays,
                .powerSources = powerSources,
                .hostStatistics = hostStatistics,
                .processes = processes,
                .applications = applications,
                .systemValues = systemValues,
                .comparison = comparison,
                .sources =
                    [this] {
                        ++sourceQuestions;
                        return sources;
                    },
                .heatSourceSurvey = survey,
                .graphics = &graphics};
    }
};

/// A reader of the machine's own.
inline DarwinThermalPressureReader::Source pressureReaderOf(const Machine& machine) {
    return DarwinThermalPressureReader::ownOnFirstUse(machine.pressure, std::make_shared<FakeUnifiedLog>());
}

} // namespace cindertop::fakes
