#include "ThermalReadings.h"
#include "fakes/FakeClock.h"
#include "fakes/FakeProcessInformation.h"
#include "fakes/FakeThermalPressureNotifications.h"
#include "fakes/FakeUnifiedLog.h"
#include "thermal/ThermalEngine.h"

#include <gtest/gtest.h>

#include <functional>
#include <thread>
#include <vector>

namespace cindertop {

namespace {

using Trend = ThermalTrend;

constexpr ThermalEngineConfiguration official{.usesExperimentalSensors = false,
                                              .thresholds = ThermalTemperatureThresholds::defaults()};
constexpr ThermalEngineConfiguration withSensors{.usesExperimentalSensors = true,
                                                 .thresholds = ThermalTemperatureThresholds::defaults()};

/// Answers what it was given, after doing what it was told to do during a read.
class ScriptedSensors final : public TemperatureSensorProviding {
public:
    struct Script {
        std::vector<TemperatureReading> temperatures;
        std::function<void()> duringRead = [] {};
        int reads = 0;
    };

    explicit ScriptedSensors(Script& script) : script_(script) {}

    std::vector<TemperatureReading> readTemperatures() override {
        ++script_.reads;
        script_.duringRead();
        return script_.temperatures;
    }

private:
    Script& script_;
};

struct Machine {
    fakes::FakeClock clock;
    fakes::FakeProcessInformation process;
    std::shared_ptr<fakes::FakeThermalPressureNotifications> notifications =
        std::make_shared<fakes::FakeThermalPressureNotifications>();
    ScriptedSensors::Script sensors;
    ThermalEngine engine{
        SystemThermalStateProvider(process,
                                   DarwinThermalPressureProvider(DarwinThermalPressureReader::ownOnFirstUse(
                                       notifications, std::make_shared<fakes::FakeUnifiedLog>())),
                                   clock),
        std::make_unique<ScriptedSensors>(sensors), ThermalScorer()};
};

TEST(ThermalEngine, MeasuresEachScoreAgainstTheLast) {
    Machine machine;
    machine.notifications->play({1, 2, 2});
    const auto first = machine.engine.snapshot(official);
    EXPECT_EQ(first.score, 35);
    EXPECT_EQ(first.trend, Trend::stable);
    const auto second = machine.engine.snapshot(official);
    EXPECT_EQ(second.score, 78);
    EXPECT_EQ(second.trend, Trend::rising);
    EXPECT_EQ(machine.engine.snapshot(official).trend, Trend::stable);
}

TEST(ThermalEngine, AResetMakesTheNextTrendStable) {
    Machine machine;
    machine.notifications->play({1, 2, 2});
    machine.engine.snapshot(official);
    machine.engine.resetTrend();
    const auto score = machine.engine.snapshot(official);
    EXPECT_EQ(score.score, 75);
    EXPECT_EQ(score.trend, Trend::stable);
}

TEST(ThermalEngine, AsksTheSensorsOnlyWhenWanted) {
    Machine machine;
    machine.sensors.temperatures = {sensor(ThermalSensorKind::cpu, 96.5)};
    const auto without = machine.engine.snapshot(official);
    EXPECT_EQ(machine.sensors.reads, 0);
    EXPECT_EQ(without.dataSource, ThermalDataSource::official);
    EXPECT_EQ(without.temperatureCelsius, std::nullopt);

    machine.engine.resetTrend();
    const auto with = machine.engine.snapshot(withSensors);
    EXPECT_EQ(with.dataSource, ThermalDataSource::mixed);
    EXPECT_EQ(with.temperatureCelsius, 96.5);
    EXPECT_EQ(with.score, 43);
    EXPECT_EQ(with.level, ThermalLevel::fair);

    machine.sensors.temperatures.clear();
    const auto empty = machine.engine.snapshot(withSensors);
    EXPECT_EQ(empty.dataSource, ThermalDataSource::official);
    EXPECT_EQ(empty.temperatureCelsius, std::nullopt);
}

TEST(ThermalEngine, TheScoreIsOfTheMomentBeforeTheSensorRead) {
    Machine machine;
    machine.sensors.duringRead = [&machine] { machine.clock.advance(std::chrono::seconds(2)); };
    const auto asked = machine.clock.now();
    EXPECT_EQ(machine.engine.snapshot(withSensors).measuredAt, asked);
}

TEST(ThermalEngine, AResetDuringTheSensorReadCountsForThatSnapshot) {
    Machine machine;
    machine.notifications->play({1, 2});
    machine.engine.snapshot(official);
    machine.sensors.duringRead = [&machine] {
        std::jthread([&machine] { machine.engine.resetTrend(); }).join();
    };
    const auto score = machine.engine.snapshot(withSensors);
    EXPECT_EQ(score.score, 75);
    EXPECT_EQ(score.trend, Trend::stable);
}

TEST(ThermalEngine, ASnapshotThatEntersDuringTheSensorReadIsTheNewestScore) {
    Machine machine;
    machine.notifications->play({2, 1}); // the waiting snapshot has read 2
    machine.sensors.duringRead = [&machine] {
        std::jthread([&machine] { EXPECT_EQ(machine.engine.snapshot(official).score, 35); }).join();
    };
    const auto score = machine.engine.snapshot(withSensors);
    EXPECT_EQ(score.trend, Trend::rising);
    EXPECT_EQ(score.score, 78);
}

TEST(ThermalEngine, SerialisesCallsFromAllThreads) {
    Machine machine;
    machine.notifications->play({0, 2, 0, 2, 0, 2});
    std::vector<std::jthread> threads;
    threads.reserve(4);
    for (int caller = 0; caller < 4; ++caller) {
        threads.emplace_back([&machine] {
            for (int call = 0; call < 50; ++call) {
                const auto score = machine.engine.snapshot(official);
                EXPECT_TRUE(score.score == 8 || score.score == 75 || score.score == 78) << score.score;
                machine.engine.resetTrend();
            }
        });
    }
}

} // namespace

} // namespace cindertop
