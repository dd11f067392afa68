#include "ThermalReadings.h"
#include "thermal/ThermalLevel.h"
#include "thermal/ThermalScore.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <string>

// NOLINTBEGIN(modernize-use-designated-initializers): the struct of a table's rows names its columns
namespace cindertop {

namespace {

constexpr auto notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr auto infinity = std::numeric_limits<double>::infinity();

template <typename Enumeration>
std::string namesAndLabels() {
    std::string text;
    for (const auto& row : casesOf<Enumeration>()) {
        text += std::string(row.name) + ' ';
        if constexpr (requires { label(row.value); }) {
            text += std::string(label(row.value)) + ' ';
        }
    }
    return text;
}

TEST(ThermalSensorKind, TheFirstRuleThatOccursInTheNameDecides) {
    for (const auto& [name, kind] : std::to_array<std::pair<std::string_view, ThermalSensorKind>>({
             {"", ThermalSensorKind::other},
             {"Ambient", ThermalSensorKind::other},
             {"battery power", ThermalSensorKind::battery},
             {"Gas Gauge Battery", ThermalSensorKind::battery},
             {"gas gauge ssd", ThermalSensorKind::battery},
             {"SSD GPU", ThermalSensorKind::storage},
             {"NAND CH0 temp", ThermalSensorKind::storage},
             {"GPU core", ThermalSensorKind::gpu},
             {"CPU Package 0", ThermalSensorKind::cpu},
             {"eACC MTR Temp Sensor0", ThermalSensorKind::cpu},
             {"PMGR SOC Die Temp Sensor0", ThermalSensorKind::cpu},
             {"SOC MTR", ThermalSensorKind::cpu},
             {"PMU tdie", ThermalSensorKind::cpu},
             {"Power VRM", ThermalSensorKind::power},
             {"Charger Regulator", ThermalSensorKind::power},
             {"PMU tcal", ThermalSensorKind::power},
         })) {
        EXPECT_EQ(inferred(name), kind) << name;
    }
}

TEST(ThermalReading, PlausibleIsFromMinus40To130) {
    for (const auto& [celsius, isPlausible] : std::to_array<std::pair<double, bool>>({
             {-40.0, true},
             {130.0, true},
             {-40.01, false},
             {130.01, false},
             {notANumber, false},
             {infinity, false},
         })) {
        EXPECT_EQ(sensor(ThermalSensorKind::cpu, celsius).isPlausible(), isPlausible) << celsius;
    }
}

TEST(ThermalReading, MergingAddsPlausibleTemperaturesBehindItsOwn) {
    auto reading = officialReading(SystemThermalState::fair, ThermalPressureLevel::moderate,
                                   {sensor(ThermalSensorKind::cpu, 50, "own")});
    const auto merged = reading.merging(std::vector{sensor(ThermalSensorKind::cpu, 131, "broken"),
                                                    sensor(ThermalSensorKind::gpu, 60, "first"),
                                                    sensor(ThermalSensorKind::battery, 30, "second")});
    EXPECT_EQ(merged.temperatures, (std::vector{sensor(ThermalSensorKind::cpu, 50, "own"),
                                                sensor(ThermalSensorKind::gpu, 60, "first"),
                                                sensor(ThermalSensorKind::battery, 30, "second")}));
    EXPECT_EQ(merged.systemState, reading.systemState);
    EXPECT_EQ(merged.pressureLevel, reading.pressureLevel);
    EXPECT_EQ(merged.measuredAt, reading.measuredAt);

    for (const auto& [before, after] : std::to_array<std::pair<ThermalDataSource, ThermalDataSource>>({
             {ThermalDataSource::official, ThermalDataSource::mixed},
             {ThermalDataSource::betaSensors, ThermalDataSource::betaSensors},
             {ThermalDataSource::mixed, ThermalDataSource::mixed},
             {ThermalDataSource::unavailable, ThermalDataSource::betaSensors},
         })) {
        reading.dataSource = before;
        EXPECT_EQ(reading.merging(std::vector{sensor(ThermalSensorKind::cpu, 60)}).dataSource, after);
        EXPECT_EQ(reading.merging({}), reading);
        EXPECT_EQ(reading.merging(std::vector{sensor(ThermalSensorKind::cpu, -41)}), reading);
    }
}

TEST(ThermalScore, RepairsItsNumbers) {
    struct Case {
        int score;
        double intensity;
        double hz;
        int expectedScore;
        double expectedIntensity;
        double expectedHz;
    };

    for (const auto& [score, intensity, hz, expectedScore, expectedIntensity, expectedHz] :
         std::to_array<Case>({
             {130, -0.5, 9, 100, 0, 5},
             {-1, 1.5, 0, 0, 1, 0.2},
             {47, 0.5, 2, 47, 0.5, 2},
             {47, notANumber, notANumber, 47, 0, 0.2},
             {47, infinity, -infinity, 47, 1, 0.2},
         })) {
        const ThermalScore made(score, ThermalLevel::fair, intensity, true, hz, std::nullopt,
                                ThermalDataSource::official, SystemThermalState::fair,
                                ThermalPressureLevel::moderate, ThermalTrend::stable, unixEpoch);
        EXPECT_EQ(made.score, expectedScore);
        EXPECT_EQ(made.effectIntensity, expectedIntensity);
        EXPECT_EQ(made.recommendedSamplingHz, expectedHz);
    }
}

} // namespace

} // namespace cindertop

// NOLINTEND(modernize-use-designated-initializers)
