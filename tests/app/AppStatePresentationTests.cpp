#include "FakeProgram.h"

#include <gtest/gtest.h>

#include <array>
#include <vector>

namespace cindertop {
namespace {

using namespace std::chrono_literals;
using Status = ThermalAssistantPresentation::Status;

/// On a machine that tells nothing about its heat.
class AppStatePresentationTest : public testing::Test {
protected:
    AppStatePresentationTest() {
        program.machine.operatingSystem = OperatingSystem::gnuLinux;
        silence();
    }

    void silence() {
        program.machine.process.state = 9;
        program.machine.pressure->registrationStatus = 1;
        program.machine.temperatureEvents.sensors.clear();
    }

    void expectState(Status status, const std::optional<std::string>& message) const {
        const auto shown = program.state->currentPresentation();
        EXPECT_EQ(caseName(shown.status), caseName(status));
        EXPECT_EQ(shown.actionMessage, message);
        EXPECT_EQ(shown.trendLabel, std::nullopt);
        EXPECT_EQ(shown.menuBarTemperatureText, std::nullopt);
    }

    FakeProgram program;
};

TEST_F(AppStatePresentationTest, NamesNoLevelThatNobodyMeasured) {
    program.defaults = {};
    auto& state = program.start();
    expectState(
        Status::notMonitoring,
        "Before you accept the terms of use, nothing is watched in the background and nothing is kept.");
    state.acceptLegalTerms();
    expectState(Status::measuring, std::nullopt);
    program.executor.runTasks();
    program.pass(1s);
    expectState(Status::noHeatReadings, "This machine tells nothing about its temperature or throttling.");
    EXPECT_EQ(state.currentRecommendation().primaryInsight, std::nullopt);

    state.setPaused(true);
    expectState(Status::paused, "Monitoring paused.");
    state.setPaused(false);
    expectState(Status::measuring, std::nullopt);

    state.set(&AppSettingsFields::experimentalTemperatureSensorsEnabled, false);
    program.pass(3s);
    expectState(Status::noHeatReadings,
                "The temperature sensors are switched off, and nothing else tells this machine's heat.");
    program.machine.process.state = 0;
    program.pass(3s);
    EXPECT_EQ(state.currentPresentation().status, Status::normal);
    silence(); // points fall to 0, which is no recovery
    program.pass(3s);
    expectState(Status::noHeatReadings,
                "The temperature sensors are switched off, and nothing else tells this machine's heat.");
}

TEST_F(AppStatePresentationTest, LeavesTheMacAsItIs) {
    program.machine.operatingSystem = OperatingSystem::mac;
    program.defaults = {};
    auto& state = program.start();
    EXPECT_EQ(state.currentPresentation(), state.makePresentation(ThermalSnapshot::idle()));
    state.acceptLegalTerms();
    program.pass(3s);
    EXPECT_EQ(state.currentPresentation().status, Status::normal);
    EXPECT_EQ(state.currentRecommendation(), *program.published().recommendationSnapshot);
}

TEST_F(AppStatePresentationTest, SaysThatASourceIsSwitchedOff) {
    program.machine.sources = {{"thermal zones", false, "no thermal zones"},
                               {std::string(temperatureSensorsSource), false, "not read yet"}};
    auto& state = program.startWith({});
    program.pass(1s);
    const auto reasonNow = [&] { return state.machineSnapshot()->sources.at(1).reason; };
    EXPECT_EQ(reasonNow(),
              "switched off; \"cindertopctl settings experimentalTemperatureSensorsEnabled true\" "
              "switches them on");
    state.set(&AppSettingsFields::experimentalTemperatureSensorsEnabled, true);
    program.pass(1s);
    EXPECT_EQ(reasonNow(), "not read yet");
}

TEST_F(AppStatePresentationTest, ShowsTemperaturesInTheChosenUnit) {
    program.machine.temperatureEvents.sensors = {{.product = "PMU tdie1", .celsius = 50}};
    auto& state = program.start();
    program.pass(1s);
    EXPECT_EQ(program.published().thermalSnapshot->temperatureText, "50°C");
    state.set(&AppSettingsFields::temperatureUnit, TemperatureUnit::fahrenheit);
    EXPECT_EQ(program.published().thermalSnapshot->temperatureText, "122°F");
    EXPECT_EQ(state.temperatureText(0), "32°F");
    state.resetSettingsToDefaults();
    EXPECT_EQ(state.temperatureText(0), "0°C");
}

} // namespace
} // namespace cindertop
