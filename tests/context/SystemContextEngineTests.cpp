#include "context/DisplayContext.h"
#include "context/PowerContext.h"
#include "context/SustainedThermalPressure.h"
#include "context/SystemContext.h"
#include "fakes/FakeDisplayList.h"
#include "fakes/FakePowerSources.h"
#include "fakes/FakeProcessInformation.h"
#include "thermal/ThermalScore.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace cindertop {
namespace {

ThermalScore scoreAt(ThermalLevel level) {
    return {50,
            level,
            0,
            false,
            1,
            std::nullopt,
            ThermalDataSource::official,
            SystemThermalState::nominal,
            ThermalPressureLevel::nominal,
            ThermalTrend::stable,
            unixEpoch};
}

// NOLINTBEGIN(modernize-use-designated-initializers): the struct of a table's rows names its columns

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

using Level = ThermalLevel;

struct Step {
    double at; ///< seconds
    std::optional<Level> level;
    double duration;
    bool isSustained;
};

AwakeTime timeAt(double seconds) {
    return AwakeTime(std::chrono::seconds(1'000)) +
           std::chrono::round<std::chrono::nanoseconds>(Seconds(seconds));
}

void expectSteps(SustainedThermalPressureConfiguration configuration, const std::vector<Step>& steps) {
    SustainedThermalPressureTracker tracker(configuration);
    for (const auto& [at, level, duration, isSustained] : steps) {
        EXPECT_EQ(tracker.update(level.transform(scoreAt), timeAt(at)),
                  SustainedThermalPressureSnapshot(isSustained, Seconds(duration), level,
                                                   configuration.minimumLevel))
            << "at " << at;
    }
}

TEST(SustainedThermalPressureTracker, IsSustainedFromTheMinimumDurationOn) {
    expectSteps(SustainedThermalPressureConfiguration::defaults(),
                {
                    {0, Level::serious, 0, false},
                    {60, Level::critical, 60, false},
                    {119.9, Level::serious, 119.9, false},
                    {120, Level::serious, 120, true},
                    {500.25, Level::critical, 500.25, true},
                });
}

TEST(SustainedThermalPressureTracker, OneTickBelowOrWithoutAScoreEndsTheStretch) {
    expectSteps(SustainedThermalPressureConfiguration::defaults(), {
                                                                       {0, Level::serious, 0, false},
                                                                       {130, Level::fair, 0, false},
                                                                       {131, Level::serious, 0, false},
                                                                       {251, Level::serious, 120, true},
                                                                       {252, std::nullopt, 0, false},
                                                                       {253, Level::critical, 0, false},
                                                                   });
}

TEST(SustainedThermalPressureTracker, AResetStartsAnew) {
    SustainedThermalPressureTracker tracker(SustainedThermalPressureConfiguration::defaults());
    tracker.update(scoreAt(Level::serious), timeAt(0));
    tracker.reset();
    EXPECT_EQ(tracker.update(scoreAt(Level::serious), timeAt(200)).activeDuration, Seconds(0));
}

// NOLINTEND(modernize-use-designated-initializers)
} // namespace

// NOLINTEND(modernize-use-designated-initializers)
} // namespace cindertop
