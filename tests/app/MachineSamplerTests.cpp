#include "app/MachineSampler.h"
#include "fakes/FakeMachine.h"

#include <gtest/gtest.h>

#include <chrono>
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

TEST_F(MachineSamplerTest, CountsMoreOftenUnderPressure) {
    machine.pressure->play({2});
    sampler.sample();
    pass(1500ms);
    EXPECT_EQ(sampler.sample().score.level, ThermalLevel::serious);
    pass(2900ms);
    EXPECT_NE(sampler.sample().offenders.measuredAt, machine.clock.time);
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

TEST_F(MachineSamplerTest, RepeatsNoTemperatureThatIsGone) {
    machine.temperatureEvents.sensors = {{.product = "CPU Core 1", .celsius = 50}};
    EXPECT_EQ(sampler.sample().temperatures.size(), 1U);
    machine.temperatureEvents.hasClient = false;
    pass(2s);
    const auto snapshot = sampler.sample();
    EXPECT_TRUE(snapshot.temperatures.empty());
    EXPECT_EQ(snapshot.score.temperatureCelsius, std::nullopt);
}

TEST_F(MachineSamplerTest, TracksHowLongPressureLasts) {
    machine.pressure->play({2});
    sampler.sample();
    pass(120s);
    const auto snapshot = sampler.sample();
    EXPECT_TRUE(snapshot.context.sustainedPressure.isSustained);
    EXPECT_EQ(snapshot.measuredAt, snapshot.context.measuredAt);
}

} // namespace
} // namespace cindertop
