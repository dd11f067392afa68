#include "ThermalReadings.h"
#include "thermal/ThermalScorer.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>

// NOLINTBEGIN(modernize-use-designated-initializers): the struct of a table's rows names its columns
namespace cindertop {

namespace {

using State = SystemThermalState;
using Pressure = ThermalPressureLevel;
using Level = ThermalLevel;
using Trend = ThermalTrend;

ThermalScore
scored(const ThermalReading& reading, const std::optional<ThermalScore>& previous = std::nullopt,
       const ThermalTemperatureThresholds& thresholds = ThermalTemperatureThresholds::defaults()) {
    return ThermalScorer().score(reading, previous, {false, thresholds});
}

ThermalScore previousOf(int score) {
    return {score,
            Level::normal,
            0,
            false,
            1,
            std::nullopt,
            ThermalDataSource::official,
            State::nominal,
            Pressure::nominal,
            Trend::stable,
            unixEpoch};
}

/// The points of a temperature alone; the official inputs give none.
int temperaturePoints(double celsius, const ThermalTemperatureThresholds& thresholds =
                                          ThermalTemperatureThresholds::defaults()) {
    return scored(officialReading(State::unavailable, Pressure::unavailable,
                                  {sensor(ThermalSensorKind::cpu, celsius)}),
                  std::nullopt, thresholds)
        .score;
}

TEST(ThermalScorer, PressureReplacesTheStateAndPointsDecideThePresentation) {
    struct Case {
        State state;
        Pressure pressure;
        int score;
        Level level;
        double intensity;
        double hz;
    };

    for (const auto& [state, pressure, score, level, intensity, hz] : std::to_array<Case>({
             {State::nominal, Pressure::nominal, 8, Level::normal, 0, 0.5},
             {State::nominal, Pressure::moderate, 35, Level::fair, 0, 1},
             {State::nominal, Pressure::heavy, 75, Level::serious, 0.375, 5},
             {State::nominal, Pressure::critical, 95, Level::critical, 0.875, 5},
             {State::serious, Pressure::nominal, 8, Level::normal, 0, 0.5},
             {State::nominal, Pressure::unavailable, 8, Level::normal, 0, 0.5},
             {State::fair, Pressure::unavailable, 35, Level::fair, 0, 1},
             {State::serious, Pressure::unavailable, 75, Level::serious, 0.375, 5},
             {State::critical, Pressure::unavailable, 95, Level::critical, 0.875, 5},
             {State::unavailable, Pressure::heavy, 75, Level::serious, 0.375, 5},
             {State::unavailable, Pressure::unavailable, 0, Level::normal, 0, 0.5},
         })) {
        const auto reading = officialReading(state, pressure);
        EXPECT_EQ(scored(reading), ThermalScore(score, level, intensity, intensity > 0, hz, std::nullopt,
                                                ThermalDataSource::official, state, pressure, Trend::stable,
                                                reading.measuredAt));
    }
}

TEST(ThermalScorer, LevelsBeginAtTheirBands) {
    struct Case {
        double celsius;
        int score;
        Level level;
        double intensity;
        double hz;
    };

    for (const auto& [celsius, score, level, intensity, hz] : std::to_array<Case>({
             {84.9, 24, Level::normal, 0, 0.5},
             {85, 25, Level::fair, 0, 1},
             {107.3, 59, Level::fair, 0, 1},
             {108, 60, Level::serious, 0.15, 5},
             {109.2, 66, Level::serious, 0.15, 5},
             {109.4, 67, Level::serious, 0.175, 5},
             {113.8, 89, Level::serious, 0.725, 5},
             {114, 90, Level::critical, 0.75, 5},
             {130, 100, Level::critical, 1, 5},
         })) {
        const auto result = scored(officialReading(State::unavailable, Pressure::unavailable,
                                                   {sensor(ThermalSensorKind::cpu, celsius)}));
        EXPECT_EQ(result.score, score) << celsius;
        EXPECT_EQ(result.level, level) << celsius;
        EXPECT_DOUBLE_EQ(result.effectIntensity, intensity) << celsius;
        EXPECT_EQ(result.shouldTriggerEffects, level >= Level::serious) << celsius;
        EXPECT_EQ(result.recommendedSamplingHz, hz) << celsius;
    }
}

TEST(ThermalScorer, TemperaturePointsRoundHalvesAwayFromZero) {
    for (const auto& [celsius, points] : std::to_array<std::pair<double, int>>({
             {-40.0, 0},
             {0.0, 0},
             {50.0, 14},
             {84.9, 24},
             {85.0, 25},
             {96.5, 43},
             {107.999, 60},
             {108.0, 60},
             {111.5, 78},
             {114.999, 95},
             {115.0, 95},
             {121.0, 97},
             {130.0, 100},
         })) {
        EXPECT_EQ(temperaturePoints(celsius), points) << celsius;
    }
    EXPECT_EQ(temperaturePoints(12.5, {24, 60, 100}), 13); // t / F * 24 is exactly 12.5
}

TEST(ThermalScorer, ThresholdsOutOfOrderOrUselessAreHarmless) {
    constexpr auto infinity = std::numeric_limits<double>::infinity();
    constexpr auto notANumber = std::numeric_limits<double>::quiet_NaN();

    struct Case {
        ThermalTemperatureThresholds thresholds;
        double celsius;
        int points;
    };

    for (const auto& [thresholds, celsius, points] : std::to_array<Case>({
             {{85, 85, 85}, 85, 95},
             {{85, 85, 115}, 85, 60},
             {{85, 108, 90}, 91, 95},
             {{100, 80, 110}, 90, 72}, // serious begins below fair: 60 + 11.67
             {{0, 108, 115}, 90, 0},
             {{-5, 108, 115}, 90, 0},
             {{notANumber, 108, 115}, 90, 0},
             {{85, notANumber, 115}, 90, 0},
             {{85, 108, infinity}, 120, 0},
             {{85, -infinity, 115}, 90, 0},
             {{1e-300, 1e308, 1e308}, -40, 0},
         })) {
        EXPECT_EQ(temperaturePoints(celsius, thresholds), points) << celsius;
    }
}

TEST(ThermalScorer, TheHottestUsableSensorRepresentsTheMachine) {
    using Kind = ThermalSensorKind;

    struct Case {
        std::vector<TemperatureReading> temperatures;
        std::optional<double> celsius;
        int score;
    };

    for (const auto& [temperatures, celsius, score] : std::to_array<Case>({
             {{sensor(Kind::battery, 60), sensor(Kind::storage, 90), sensor(Kind::power, 110)},
              std::nullopt,
              0},
             {{sensor(Kind::cpu, 131), sensor(Kind::gpu, 70)}, 70, 20},
             {{sensor(Kind::other, 80), sensor(Kind::cpu, 79)}, 80, 23},
             {{sensor(Kind::cpu, -30), sensor(Kind::gpu, -20)}, -20, 0},
         })) {
        const auto result = scored(officialReading(State::unavailable, Pressure::unavailable, temperatures));
        EXPECT_EQ(result.temperatureCelsius, celsius);
        EXPECT_EQ(result.score, score);
    }
    const auto cool = scored(officialReading(State::nominal, Pressure::heavy, {sensor(Kind::cpu, 40)}));
    EXPECT_EQ(cool.score, 75);
    EXPECT_EQ(cool.temperatureCelsius, 40) << "told even when it does not decide";
}

TEST(ThermalScorer, TrendAndBonusFollowThePreviousScore) {
    struct Case {
        int previous;
        double celsius; ///< on thresholds at which points are degrees, plus one from 24 on
        int score;
        Trend trend;
        Level level;
        double intensity;
    };

    constexpr ThermalTemperatureThresholds thresholds{24, 59, 94};
    for (const auto& [previous, celsius, score, trend, level, intensity] : std::to_array<Case>({
             {10, 22, 22, Trend::rising, Level::normal, 0}, // no bonus below fair
             {20, 23.9, 24, Trend::stable, Level::normal, 0},
             {19, 23.9, 24, Trend::rising, Level::normal, 0},
             {29, 23.9, 24, Trend::cooling, Level::normal, 0},
             {20, 24, 28, Trend::rising, Level::fair, 0},
             {35, 74, 78, Trend::rising, Level::serious, 0.45},
             {50, 56, 60, Trend::rising, Level::serious, 0.15}, // the bonus crosses the band
             {53, 56, 57, Trend::stable, Level::fair, 0},
             {80, 86, 90, Trend::rising, Level::critical, 0.75},
             {8, 130, 100, Trend::rising, Level::critical, 1}, // capped
             {100, 93, 94, Trend::cooling, Level::critical, 0.85},
         })) {
        const auto result = scored(officialReading(State::unavailable, Pressure::unavailable,
                                                   {sensor(ThermalSensorKind::cpu, celsius)}),
                                   previousOf(previous), thresholds);
        EXPECT_EQ(result.score, score) << previous << " to " << celsius;
        EXPECT_EQ(result.trend, trend) << previous << " to " << celsius;
        EXPECT_EQ(result.level, level) << previous << " to " << celsius;
        EXPECT_DOUBLE_EQ(result.effectIntensity, intensity) << previous << " to " << celsius;
    }
}

TEST(ThermalScorer, TheTrendIsMeasuredBeforeTheBonus) {
    std::optional<ThermalScore> previous;
    for (const auto& [celsius, score, trend] : std::to_array<std::tuple<double, int, Trend>>({
             {29, 30, Trend::stable},
             {34, 38, Trend::rising},
             {39, 40, Trend::stable},
         })) {
        previous = scored(officialReading(State::unavailable, Pressure::unavailable,
                                          {sensor(ThermalSensorKind::cpu, celsius)}),
                          previous, {24, 59, 94});
        EXPECT_EQ(previous->score, score);
        EXPECT_EQ(previous->trend, trend);
    }
}

} // namespace

} // namespace cindertop

// NOLINTEND(modernize-use-designated-initializers)
