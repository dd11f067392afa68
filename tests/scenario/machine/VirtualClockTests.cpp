#include "scenario/machine/VirtualClock.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace cindertop::simulated {
namespace {

using namespace std::chrono_literals;

constexpr Instant start{1'700'000'000s};

TEST(VirtualClock, RunsTimersByInstantThenByStart) {
    VirtualClock clock(start);
    std::string order;
    std::vector<std::unique_ptr<Timer>> timers;
    const auto add = [&](std::chrono::nanoseconds delay, char name) {
        timers.push_back(clock.start(delay, [&order, name] { order += name; }));
    };
    add(2ns, 'd');
    add(1ns, 'b');
    add(1ns, 'c');
    add(-5s, 'a');
    add(std::chrono::nanoseconds::max(), 'z');
    EXPECT_EQ(order, "");
    EXPECT_EQ(clock.nextDue(), start);
    while (clock.runNextDue()) {
    }
    EXPECT_EQ(order, "a");
    EXPECT_EQ(clock.nextDue(), start + 1ns);
    clock.advanceTo(start + 2ns); // what was due in between still comes first
    while (clock.runNextDue()) {
    }
    EXPECT_EQ(order, "abcd");
    clock.advanceTo(start);
    EXPECT_EQ(clock.now(), start + 2ns);
    EXPECT_EQ(clock.nextDue(), Instant::max());
}

TEST(VirtualClock, CancelsByDestructionAlsoFromWithinAnAction) {
    VirtualClock clock(start);
    int runs = 0;
    std::unique_ptr<Timer> own;
    std::unique_ptr<Timer> other;
    own = clock.start(0ns, [&, token = std::make_shared<int>(1)] {
        own.reset();
        other.reset();
        runs += *token; // the action outlives its timer
        own = clock.start(0ns, [&] { runs += 10; });
    });
    other = clock.start(0ns, [&] { runs += 100; });
    EXPECT_TRUE(clock.runNextDue());
    EXPECT_EQ(runs, 1);
    EXPECT_TRUE(clock.runNextDue());
    EXPECT_EQ(runs, 11);
    EXPECT_FALSE(clock.runNextDue());
    EXPECT_EQ(clock.nextDue(), std::nullopt);
}

TEST(VirtualClock, MayGoBeforeItsTimers) {
    std::unique_ptr<Timer> timer;
    int runs = 0;
    {
        VirtualClock clock(start);
        timer = clock.start(0ns, [&] { ++runs; });
    }
    timer.reset();
    EXPECT_EQ(runs, 0);
}

} // namespace
} // namespace cindertop::simulated
