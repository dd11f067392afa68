#include "ScenarioTexts.h"
#include "context/DisplayContext.h"
#include "context/PowerContext.h"
#include "cpu/SystemProcessCPUProvider.h"
#include "scenario/machine/SimulatedDesktop.h"
#include "scenario/machine/SimulatedMachine.h"
#include "scenario/machine/VirtualClock.h"
#include "thermal/ThermalProviders.h"

#include <gtest/gtest.h>

#include <array>

namespace cindertop::simulated {
namespace {

using namespace std::chrono_literals;

/// A scenario, its clock and its machine.
struct Stage {
    std::shared_ptr<const Scenario> scenario;
    VirtualClock clock{scenario->start};
    SimulatedMachine simulated{scenario, clock};
    Machine machine = simulated.services();

    void goTo(std::chrono::nanoseconds elapsed) { clock.advanceTo(scenario->start + elapsed); }
};

TEST(SimulatedMachine, RegistersForPressureByTheFirstFrameOnly) {
    struct Case {
        std::string_view frames;
        std::chrono::nanoseconds firstRead;
        std::optional<ThermalPressureLevel> levelThen;
        std::optional<ThermalPressureLevel> levelAtTwo;
        std::size_t lines;
    };

    using enum ThermalPressureLevel;
    for (const auto& [frames, firstRead, levelThen, levelAtTwo, lines] : std::to_array<Case>({
             {R"([{"at": 0, "pressure": null}, {"at": 1, "pressure": 1}])", 0s, std::nullopt, std::nullopt,
              0},
             {R"([{"at": 0, "pressure": null}, {"at": 1, "pressure": 1}])", 1s, std::nullopt, std::nullopt,
              0},
             {R"([{"at": 0}, {"at": 1, "pressure": null}, {"at": 2, "pressure": 0}])", 1s, std::nullopt,
              nominal, 1},
             {R"([{"at": 0}, {"at": 1, "pressure": null}, {"at": 2, "pressure": 0}])", 0s, nominal, nominal,
              1},
             {R"([{"at": 0}, {"at": 2, "pressure": 4294967296}])", 0s, nominal, unavailable, 2},
         })) {
        Stage stage{scenarioOf(frames)};
        std::vector<UnifiedLogLine> written;
        const auto log = std::make_shared<CapturingUnifiedLog>(
            [&](const UnifiedLogLine& line) { written.push_back(line); });
        stage.goTo(firstRead);
        DarwinThermalPressureReader reader(stage.machine.pressure, log);
        EXPECT_EQ(reader.currentLevel(), levelThen) << frames;
        stage.goTo(2s);
        EXPECT_EQ(reader.currentLevel(), levelAtTwo) << frames;
        EXPECT_EQ(written.size(), lines) << frames;
    }
}

TEST(SimulatedMachine, ListsSensorsForItsArchitecture) {
    constexpr std::string_view frames =
        R"([{"at": 0, "sensors": [{"product": "PMU tdie1", "celsius": 41.5}, {"product": "x", "celsius": null},
                                  {"product": null, "celsius": 40}, {"product": "NAND", "celsius": 36}]},
            {"at": 1, "sensors": null}])";
    Stage arm{scenarioOf(frames)};
    const auto readings =
        ExperimentalSensorTemperatureProvider(arm.machine.temperatureEvents).readTemperatures();
    ASSERT_EQ(readings.size(), 2U);
    EXPECT_EQ(readings[0].label, "PMU tdie1");
    EXPECT_EQ(readings[0].celsius, 41.5);
    EXPECT_EQ(readings[1].label, "NAND");
    arm.goTo(1s);
    EXPECT_FALSE(arm.machine.temperatureEvents.createClient());

    Stage other{scenarioOf(frames, R"("machine": {"architecture": "x86_64"}, )")};
    EXPECT_FALSE(other.machine.temperatureEvents.isSupported());
}

TEST(SimulatedMachine, TellsDisplaysAndPower) {
    Stage stage{scenarioOf(R"([
        {"at": 0},
        {"at": 1, "displays": [{"id": 9, "builtIn": false}, {"id": 4, "builtIn": true}],
         "power": {"providing": null, "lowPowerMode": true, "entries": [
            {"BatteryInstalled": false},
            {"BatteryInstalled": 1, "CurrentCapacity": true, "MaxCapacity": 100, "ExternalConnected": false,
             "Temperature": 3031}]}},
        {"at": 2, "displays": null, "power": {"providing": "UPS Power", "lowPowerMode": false, "entries": null}}
    ])")};
    const SystemDisplayContextProvider displays(stage.machine.displays);
    const SystemPowerContextProvider power(stage.machine.powerSources, stage.machine.process);
    EXPECT_EQ(displays.readDisplayContext(), DisplayContextSnapshot(true, 1, 1, 0));
    EXPECT_EQ(power.readPowerContext(),
              PowerContextSnapshot(false, PowerSourceKind::acPower, {}, {}, {}, false, {}, {}));
    stage.goTo(1s);
    EXPECT_EQ(displays.readDisplayContext(), DisplayContextSnapshot(true, 2, 1, 1));
    const auto battery = power.readPowerContext();
    EXPECT_EQ(battery.source, PowerSourceKind::batteryPower);
    EXPECT_EQ(battery.batteryLevelPercent, std::nullopt); // true is no integer
    EXPECT_TRUE(battery.isLowPowerModeEnabled);
    EXPECT_TRUE(battery.batteryTemperatureCelsius);
    stage.goTo(2s);
    EXPECT_EQ(displays.readDisplayContext(), DisplayContextSnapshot::unavailable());
    EXPECT_EQ(power.readPowerContext().source, PowerSourceKind::upsPower);
}

TEST(SimulatedMachine, ListsProcessesWithTheirApplications) {
    Stage stage{scenarioOf(R"([
        {"at": 0, "processes": [
            {"pid": 30, "longName": "12345678901234567890123456789012", "shortName": "x", "millicores": 250,
             "path": "/Applications//./A.app/Contents/B.app/b", "parent": 7, "user": 502},
            {"pid": 20, "shortName": "short", "systemFlag": true, "path": "/Gone.app/x", "startedAt": -2.5},
            {"pid": 40}, {"pid": 0, "longName": "kernel"}]},
        {"at": 1, "processes": null}
    ])",
                           R"("bundles": {"/Applications/A.app": {"CFBundleIdentifier": "com.a",
                                          "CFBundleName": "A"}}, )")};
    SystemProcessCPUProvider provider(stage.machine.processes, stage.machine.applications);
    stage.goTo(500ms);
    const auto readings = provider.readings(stage.clock.now());
    ASSERT_EQ(readings.size(), 2U); // a process without a name and identifier 0 are none
    EXPECT_EQ(readings[0].processIdentifier, 30);
    EXPECT_EQ(readings[0].name, "12345678901234567890123456789012");
    EXPECT_EQ(readings[0].parentProcessIdentifier, 7);
    EXPECT_EQ(readings[0].userIdentifier, 502U);
    EXPECT_EQ(readings[0].appBundlePath, "/Applications/A.app");
    EXPECT_EQ(readings[0].appBundleIdentifier, "com.a");
    EXPECT_EQ(readings[0].appDisplayName, "A");
    EXPECT_EQ(readings[0].cumulativeCPUTimeNanoseconds, 125'000'000U);
    EXPECT_EQ(readings[0].startedAt, std::nullopt);
    EXPECT_EQ(readings[1].name, "short");
    EXPECT_TRUE(readings[1].isSystemProcess);
    EXPECT_EQ(readings[1].appBundlePath, std::nullopt);
    EXPECT_EQ(readings[1].startedAt, stage.scenario->start - 2500ms);
    stage.goTo(1s);
    EXPECT_TRUE(provider.readings(stage.clock.now()).empty());
}

TEST(SimulatedMachine, TellsTheMachineAndTheProgram) {
    Stage stage{scenarioOf(R"([{"at": 0, "thermalState": 3}])",
                           R"("machine": {"cpuBrand": null, "processorCount": 3}, "ownProcessIdentifier": 12,
                              "ownBundleIdentifier": "me", )")};
    const auto& process = stage.machine.process;
    EXPECT_EQ(process.thermalState(), 3);
    EXPECT_EQ(process.activeProcessorCount(), 3);
    EXPECT_EQ(process.processIdentifier(), 12);
    EXPECT_EQ(process.bundleIdentifier(), "me");
    EXPECT_EQ(stage.machine.systemValues.text("hw.model"), "Mac14,2");
    EXPECT_EQ(stage.machine.systemValues.text("machdep.cpu.brand_string"), std::nullopt);
    EXPECT_EQ(stage.machine.systemValues.text("hw.memsize"), std::nullopt);
}

TEST(SimulatedNotificationCenter, FollowsTheAnswer) {
    using enum NotificationAuthorizationStatus;

    struct Case {
        NotificationAnswer answer;
        NotificationAuthorizationStatus afterwards;
    };

    for (const auto& [answer, afterwards] : std::to_array<Case>({
             {NotificationAnswer::granted, authorized},
             {NotificationAnswer::refused, denied},
             {NotificationAnswer::error, notDetermined},
         })) {
        SimulatedNotificationCenter center({.authorization = notDetermined, .answer = answer}, nullptr);
        std::optional<bool> isAnswered;
        center.requestAuthorization({}, [&](const auto& result) { isAnswered = result.has_value(); });
        EXPECT_EQ(isAnswered, answer != NotificationAnswer::error);
        std::optional<NotificationAuthorizationStatus> status;
        center.readAuthorizationStatus([&](auto answered) { status = answered; });
        EXPECT_EQ(status, afterwards);
    }
}

TEST(SimulatedNotificationCenter, TellsOfARequestBeforeItIsDone) {
    std::vector<std::string> events;
    for (const auto delivery : {NotificationDelivery::accepted, NotificationDelivery::error}) {
        SimulatedNotificationCenter center(
            {.delivery = delivery}, [&](const auto& request) { events.push_back(request.identifier); });
        center.add({.identifier = "hot", .content = {}, .delay = {}},
                   [&](const auto& result) { events.emplace_back(result ? "done" : "failed"); });
    }
    EXPECT_EQ(events, (std::vector<std::string>{"hot", "done", "failed"}));
}

} // namespace
} // namespace cindertop::simulated
