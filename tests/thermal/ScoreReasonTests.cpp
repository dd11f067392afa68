#include "thermal/ScoreReason.h"

#include <gtest/gtest.h>

#include <array>
#include <vector>

namespace cindertop {
namespace {

using Pressure = ThermalPressureLevel;
using State = SystemThermalState;

const TemperatureFormatter celsius("en_GB", TemperatureFormatter::Unit::celsius);

ThermalReading readingOf(State state, Pressure pressure, std::optional<double> temperature) {
    ThermalReading reading{state, pressure, {}, ThermalDataSource::official, {}};
    if (temperature) {
        reading.temperatures.push_back({"CPU", "CPU", *temperature, ThermalSensorKind::cpu});
    }
    return reading;
}

TEST(ScoreReason, AddsUpToTheScore) {
    struct Case {
        State state;
        Pressure pressure;
        std::optional<double> temperature;
        int previous;
        std::optional<std::string> reason;
    };

    const ThermalEngineConfiguration configuration{true, ThermalTemperatureThresholds::defaults()};
    for (const auto& [state, pressure, temperature, previous, reason] : std::to_array<Case>({
             {State::unavailable, Pressure::unavailable, {}, 0, std::nullopt},
             {State::serious, Pressure::heavy, {}, 35, "Pressure heavy: 75. Rising: +3"},
             {State::serious, Pressure::heavy, {}, 75, "Pressure heavy: 75"},
             {State::serious, Pressure::nominal, {}, 75, "Pressure nominal: 8"},
             {State::serious, Pressure::unavailable, 40, 75, "Thermal state serious: 75"},
             {State::nominal, Pressure::nominal, 85, 25, "Temperature 85°C: 25"},
             {State::unavailable, Pressure::unavailable, -5, 0, "Temperature -5°C: 0"},
             {State::unavailable, Pressure::unavailable, 130, 0, "Temperature 130°C: 100"}, // nothing to add
             {State::unavailable, Pressure::unavailable, 127, 0, "Temperature 127°C: 99. Rising: +1"},
             {State::nominal, Pressure::nominal, 60, 0, "Temperature 60°C: 17"}, // no bonus below fair
         })) {
        const ThermalScore before(previous, ThermalLevel::normal, 0, false, 1, {},
                                  ThermalDataSource::official, state, pressure, ThermalTrend::stable, {});
        const auto score =
            ThermalScorer().score(readingOf(state, pressure, temperature), before, configuration);
        EXPECT_EQ(scoreReason(score, celsius), reason);
        const auto steps = ThermalScorer::steps(score, configuration.thresholds);
        EXPECT_EQ(steps.points + steps.risingBonus, score.score);
    }
}

TEST(ScoreReason, TheHottestSensorIsOneThatCounts) {
    const std::vector<TemperatureReading> sensors{{"Battery", "Battery", 90, ThermalSensorKind::battery},
                                                  {"GPU", "GPU", 61, ThermalSensorKind::gpu},
                                                  {"CPU", "CPU", 90, ThermalSensorKind::cpu}};
    const auto reading = readingOf(State::nominal, Pressure::nominal, 90);
    const auto score = ThermalScorer().score(reading, {}, {true, ThermalTemperatureThresholds::defaults()});
    ASSERT_NE(hottestSensor(score, sensors), nullptr);
    EXPECT_EQ(hottestSensor(score, sensors)->id, "CPU");
    EXPECT_EQ(hottestSensor(score, {}), nullptr);
}

TEST(ScoreReason, LimitsAreToldAsFarAsTheyAreKnown) {
    TemperatureReading reading{"CPU", "CPU", 93, ThermalSensorKind::cpu};
    EXPECT_EQ(temperatureWithLimits(reading, celsius), "93°C");
    reading.limits.switchesOffAt = 105;
    EXPECT_EQ(temperatureWithLimits(reading, celsius), "93°C · switches off at 105°C");
    reading.limits.slowsFrom = 85;
    EXPECT_EQ(temperatureWithLimits(reading, celsius), "93°C · slows from 85°C · switches off at 105°C");
}

} // namespace
} // namespace cindertop
