#include "cpu/GlobalCPUUsageMonitor.h"
#include "fakes/FakeHostStatistics.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <optional>

namespace cindertop {
namespace {

using namespace std::chrono_literals;

constexpr std::uint64_t largest = std::numeric_limits<std::uint64_t>::max();

class GlobalCPUUsageMonitorTest : public testing::Test {
protected:
    std::optional<double> sample(std::optional<HostCpuLoad> load) {
        statistics.load = load;
        return monitor.sample(unixEpoch);
    }

    fakes::FakeHostStatistics statistics;
    GlobalCPUUsageMonitor monitor{std::make_unique<DarwinSystemCPUTimeProvider>(statistics)};
};

TEST(DarwinSystemCPUTimeProvider, KeepsEveryCounterApart) {
    fakes::FakeHostStatistics statistics;
    statistics.load = HostCpuLoad{.user = 1, .system = 20, .idle = 300, .nice = 4000};
    const Instant at{5s};
    const auto snapshot = DarwinSystemCPUTimeProvider(statistics).snapshot(at);
    EXPECT_EQ(snapshot,
              (SystemCPUTimeSnapshot{.user = 1, .system = 20, .idle = 300, .nice = 4000, .measuredAt = at}));
    EXPECT_TRUE(snapshot->activeTicks() == 4021);
    EXPECT_TRUE(snapshot->totalTicks() == 4321);
}

TEST_F(GlobalCPUUsageMonitorTest, TellsTheBusyShareOfEachInterval) {
    struct Case {
        HostCpuLoad first;
        HostCpuLoad second;
        std::optional<double> percent;
    };

    for (const auto& [first, second, percent] : std::to_array<Case>({
             {{10, 10, 10, 10}, {20, 20, 20, 20}, 75.0}, // nice time is busy time
             {{10, 10, 10, 10}, {10, 10, 90, 10}, 0.0},
             {{10, 10, 10, 10}, {15, 10, 10, 12}, 100.0},
             {{10, 10, 10, 10}, {10, 10, 10, 10}, std::nullopt},  // no tick passed
             {{10, 10, 10, 10}, {50, 10, 9, 10}, std::nullopt},   // idle went back
             {{10, 10, 10, 10}, {1, 10, 11, 10}, std::nullopt},   // the total went back
             {{100, 10, 10, 10}, {60, 10, 60, 10}, std::nullopt}, // more idle than total: user was reset
             {{0, 0, 0, 0}, {largest, largest, largest, largest}, 75.0},
             {{largest, largest, 0, largest}, {largest, largest, largest, largest}, 0.0},
         })) {
        monitor.reset();
        EXPECT_EQ(sample(first), std::nullopt);
        EXPECT_EQ(sample(second), percent) << second.user << ' ' << second.idle;
    }
}

TEST_F(GlobalCPUUsageMonitorTest, MeasuresFromTheLatestCounters) {
    sample(HostCpuLoad{.user = 100, .system = 0, .idle = 100, .nice = 0});
    EXPECT_EQ(sample(HostCpuLoad{.user = 10, .system = 0, .idle = 10, .nice = 0}), std::nullopt);
    EXPECT_EQ(sample(HostCpuLoad{.user = 20, .system = 0, .idle = 40, .nice = 0}), 25.0);
    EXPECT_EQ(sample(HostCpuLoad{.user = 50, .system = 0, .idle = 50, .nice = 0}), 75.0);
}

TEST_F(GlobalCPUUsageMonitorTest, StartsOverAfterARefusalAndAfterAReset) {
    const HostCpuLoad first{.user = 10, .system = 0, .idle = 10, .nice = 0};
    const HostCpuLoad second{.user = 20, .system = 0, .idle = 20, .nice = 0};
    sample(first);
    EXPECT_EQ(sample(std::nullopt), std::nullopt);
    EXPECT_EQ(sample(first), std::nullopt);
    EXPECT_EQ(sample(second), 50.0);
    monitor.reset();
    EXPECT_EQ(sample(second), std::nullopt);
}

} // namespace
} // namespace cindertop
