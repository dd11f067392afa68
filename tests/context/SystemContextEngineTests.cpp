#include "Scores.h"
#include "context/DisplayContext.h"
#include "context/PowerContext.h"
#include "context/SystemContext.h"
#include "fakes/FakeDisplayList.h"
#include "fakes/FakePowerSources.h"
#include "fakes/FakeProcessInformation.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace cindertop {

namespace {

using namespace std::chrono_literals;

constexpr Instant start{1'700'000'000s + 7ns};

struct Machine {
    fakes::FakeDisplayList displays{{{.identifier = 1, .place = DisplayPlace::builtIn},
                                     {.identifier = 2, .place = DisplayPlace::external}}};
    fakes::FakePowerSources powerSources;
    fakes::FakeProcessInformation process;
    SystemContextEngine engine{std::make_unique<SystemDisplayContextProvider>(displays),
                               std::make_unique<SystemPowerContextProvider>(powerSources, process),
                               SustainedThermalPressureConfiguration::defaults()};

    SystemContextSnapshot snapshot(const std::optional<ThermalScore>& score, Instant now) {
        return engine.snapshot(score, now, AwakeTime(now.time_since_epoch()));
    }
};

TEST(SystemContextEngine, GathersDisplaysPowerAndPressureOfTheCallersInstant) {
    Machine machine;
    machine.powerSources.entries = std::vector<fakes::FakePowerEntry>{{{"BatteryInstalled", true}}};
    const auto first = machine.snapshot(scoreAt(ThermalLevel::serious), start);
    EXPECT_EQ(first.displays, DisplayContextSnapshot(true, 2, 1, 1));
    EXPECT_TRUE(first.power.isAvailable);
    EXPECT_EQ(first.measuredAt, start);
    EXPECT_FALSE(first.sustainedPressure.isSustained);
    EXPECT_EQ(first.sustainedPressure.activeDuration, 0s);

    const auto second = machine.snapshot(scoreAt(ThermalLevel::serious), start + 120s);
    EXPECT_EQ(second.measuredAt, start + 120s);
    EXPECT_TRUE(second.sustainedPressure.isSustained);
    EXPECT_EQ(second.sustainedPressure.activeDuration, 120s);
}

TEST(SystemContextEngine, WithoutAScoreOrAfterAResetTheStretchIsOver) {
    Machine machine;
    machine.snapshot(scoreAt(ThermalLevel::serious), start);
    EXPECT_EQ(machine.snapshot(std::nullopt, start + 130s).sustainedPressure,
              SustainedThermalPressureSnapshot::inactive());
    EXPECT_EQ(machine.snapshot(scoreAt(ThermalLevel::serious), start + 131s).sustainedPressure.activeDuration,
              0s);
    machine.engine.resetPressureHistory();
    EXPECT_EQ(
        machine.snapshot(scoreAt(ThermalLevel::critical), start + 300s).sustainedPressure.activeDuration, 0s);
}

TEST(SystemContextEngine, FailingProvidersDoNotStopThePressureTracking) {
    Machine machine;
    machine.displays.countStatus = 1;
    machine.powerSources.entries = std::nullopt;
    machine.snapshot(scoreAt(ThermalLevel::critical), start);
    const auto context = machine.snapshot(scoreAt(ThermalLevel::critical), start + 121s);
    EXPECT_EQ(context.displays, DisplayContextSnapshot::unavailable());
    EXPECT_FALSE(context.power.isAvailable);
    EXPECT_TRUE(context.sustainedPressure.isSustained);
}

TEST(SystemContextEngine, SerialisesCallsFromAllThreads) {
    Machine machine;
    {
        std::vector<std::jthread> threads;
        threads.reserve(4);
        for (int caller = 0; caller < 4; ++caller) {
            threads.emplace_back([&machine] {
                for (int call = 0; call < 25; ++call) {
                    machine.snapshot(scoreAt(ThermalLevel::serious), start);
                }
                machine.engine.resetPressureHistory();
            });
        }
    }
    EXPECT_EQ(machine.displays.capacities.size(), 100);
}

} // namespace

} // namespace cindertop
