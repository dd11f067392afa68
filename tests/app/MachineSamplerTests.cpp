#include "app/MachineSampler.h"
#include "app/SamplingSchedule.h"
#include "fakes/FakeMachine.h"

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <limits>
#include <string>
#include <vector>

namespace cindertop {
namespace {

using namespace std::chrono_literals;
using enum ProcessOffenderSnapshotState;

constexpr std::uint64_t nanosecondsPerSecond = 1'000'000'000;

class MachineSamplerTest : public testing::Test {
protected:
    /// Lets time pass in which the one process keeps one of the eight processors half busy.
    void pass(std::chrono::milliseconds time) {
        machine.clock.advance(time);
        machine.processes.processes.front().accounting->totalUserTime +=
            static_cast<std::uint64_t>(time.count()) * nanosecondsPerSecond / 2000;
    }

    fakes::FakeMachine machine;
    MachineSampler sampler{machine.services(), fakes::pressureReaderOf(machine.services()),
                           ProcessOffenderConfiguration::defaultConfiguration(machine.process)};
};

TEST_F(MachineSamplerTest, CountsTheProcessesOnSchedule) {
    EXPECT_EQ(sampler.sample().offenders.state, collecting);
    pass(1400ms);
    EXPECT_EQ(sampler.sample().offenders.state, collecting);
    pass(100ms);
    const auto first = sampler.sample();
    ASSERT_EQ(first.offenders.state, ready);
    ASSERT_EQ(first.offenders.offenders.size(), 1U);
    EXPECT_DOUBLE_EQ(first.offenders.offenders[0].cpuPercent, 50.0 / 8);
    EXPECT_EQ(machine.sourceQuestions, 2); // with each census

    pass(7900ms);
    EXPECT_EQ(sampler.sample().offenders, first.offenders); // the last census stands
    pass(100ms);
    EXPECT_EQ(sampler.sample().offenders.measuredAt, machine.clock.time);
}

TEST_F(MachineSamplerTest, AShortLookIsReadyAfterPriming) {
    machine.temperatureEvents.sensors = {{.product = "CPU Core 1", .celsius = 96.5},
                                         {.product = "GPU", .celsius = 61}};
    machine.hostStatistics.load = HostCpuLoad{.user = 100, .system = 0, .idle = 100, .nice = 0};
    sampler.prime();
    EXPECT_EQ(machine.temperatureEvents.clientsCreated, 0); // some sensors would not answer twice
    pass(500ms);
    machine.hostStatistics.load = HostCpuLoad{.user = 120, .system = 5, .idle = 175, .nice = 0};

    const auto snapshot = sampler.sampleNow();
    EXPECT_EQ(snapshot.offenders.state, ready);
    EXPECT_EQ(snapshot.cpuPercent, 25.0);
    EXPECT_EQ(snapshot.score.temperatureCelsius, 96.5);
    EXPECT_EQ(snapshot.score.trend, ThermalTrend::stable); // the first score has nothing to rise from
    ASSERT_EQ(snapshot.temperatures.size(), 2U);
    EXPECT_EQ(snapshot.temperatures[1].label, "GPU");
}

TEST(SamplingSchedule, TheDelayStaysBetweenAFifthOfASecondAndFive) {
    struct Case {
        double hz;
        double seconds;
    };

    for (const auto& [hz, seconds] : std::to_array<Case>({
             {0.5, 2},
             {1, 1},
             {4, 0.25},
             {5, 0.2},
             {12, 0.2},
             {0.1, 5},
             {0, 5},
             {-3, 5},
             {-std::numeric_limits<double>::infinity(), 5},
             {std::numeric_limits<double>::quiet_NaN(), 0.2},
         })) {
        EXPECT_DOUBLE_EQ(tickDelay(hz).count(), seconds) << hz;
    }
    EXPECT_DOUBLE_EQ(tickDelay(4.99).count(), 1 / 4.99);
}

TEST(SamplingDate, IsDueAtOnceAndThenByStateAndLevel) {
    using enum ProcessOffenderSnapshotState;

    struct Case {
        ProcessOffenderSnapshotState state;
        ThermalLevel level;
        std::chrono::milliseconds interval;
    };

    const AwakeTime now{1'000'000s};
    for (const auto& [state, level, interval] : std::to_array<Case>({
             {ready, ThermalLevel::normal, 8s},
             {ready, ThermalLevel::fair, 6s},
             {ready, ThermalLevel::serious, 3s},
             {ready, ThermalLevel::critical, 3s},
             {unavailable, ThermalLevel::normal, 8s},
             {collecting, ThermalLevel::critical, 1500ms},
         })) {
        SamplingDate next;
        EXPECT_TRUE(next.isDue(now));
        next.scheduleAfter(now, offenderSamplingInterval(state, level));
        EXPECT_FALSE(next.isDue(now + interval - 1ns));
        EXPECT_TRUE(next.isDue(now + interval));
    }
}

} // namespace
} // namespace cindertop
