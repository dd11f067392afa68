#include "agent/MemoryReturn.h"
#include "scenario/machine/VirtualClock.h"

#include <gtest/gtest.h>

namespace cindertop::agent {
namespace {

using namespace std::chrono_literals;

TEST(MemoryReturn, ComesAfterTheStartAndThenNowAndAgain) {
    const Instant start{1000h};
    simulated::VirtualClock time(start);
    int returns = 0;
    const MemoryReturn memory(time, [&] { ++returns; });
    const auto returnsUntil = [&](std::chrono::seconds at) {
        time.advanceTo(start + at);
        while (time.runNextDue()) {
        }
        return returns;
    };
    EXPECT_EQ(returnsUntil(9s), 0);
    EXPECT_EQ(returnsUntil(10s), 1);
    EXPECT_EQ(returnsUntil(609s), 1);
    EXPECT_EQ(returnsUntil(610s), 2);
    EXPECT_EQ(returnsUntil(1210s), 3);
}

} // namespace
} // namespace cindertop::agent
