#include "app/SamplingSchedule.h"

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <limits>

namespace cindertop {
namespace {

using namespace std::chrono_literals;

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
