#include "app/SleepWatch.h"

#include <gtest/gtest.h>

namespace cindertop {
namespace {

using namespace std::chrono_literals;

constexpr Uptime at(std::chrono::nanoseconds awake, std::chrono::nanoseconds asleep) {
    return {.awake = AwakeTime(awake), .asleep = asleep};
}

TEST(SleepWatch, TellsSleepFromDelays) {
    struct Case {
        const char* what;
        Uptime later; ///< the look before was at 100 s awake, 50 s asleep, and this one is due after 2 s
        bool hasSlept;
        std::chrono::nanoseconds awake;
    };

    for (const auto& [what, later, hasSlept, awake] : std::to_array<Case>({
             {"in time", at(102s, 50s), false, 102s},
             {"the two clocks are read one after the other", at(102s, 50s + 900ms), false, 102s},
             {"a busy machine", at(132s, 50s), false, 132s},
             {"a short sleep", at(102s, 51s), true, 102s},
             {"a night", at(102s, 8h), true, 102s},
             {"halted from outside", at(132s + 1ns, 50s), true, 102s},
             {"asleep and halted", at(112s, 90s), true, 102s},
         })) {
        SleepWatch watch;
        EXPECT_FALSE(watch.look(at(100s, 50s)).hasSlept) << "nothing is known of before the first look";
        watch.expectAfter(at(100s, 50s), 2s);
        const auto look = watch.look(later);
        EXPECT_EQ(look.hasSlept, hasSlept) << what;
        EXPECT_EQ(look.awake, AwakeTime(awake)) << what;
        EXPECT_EQ(watch.awakeAt(at(later.awake.time_since_epoch() + 1s, later.asleep)),
                  AwakeTime(awake + 1s));
        EXPECT_FALSE(watch.look(later).hasSlept) << "it is told once: " << what;
    }
}

TEST(SleepWatch, ExpectsNothingWhilePausedButKnowsOfASleep) {
    for (const bool sleeps : {false, true}) {
        SleepWatch watch;
        watch.look(at(100s, 0s));
        watch.expectAfter(at(100s, 0s), 2s);
        watch.expectNothing();
        EXPECT_EQ(watch.look(at(2h, sleeps ? 1h : 0h)).hasSlept, sleeps);
    }
}

TEST(SleepWatch, BelievesTheSystem) {
    for (const bool isSeenBefore : {false, true}) {
        SleepWatch watch;
        watch.look(at(100s, 0s));
        watch.noteComingSleep();
        EXPECT_FALSE(watch.look(at(101s, 0s)).hasSlept) << "it has not come yet";
        const auto asleep = isSeenBefore ? 1h : 0h;
        EXPECT_EQ(watch.look(at(102s, asleep)).hasSlept, isSeenBefore);
        watch.noteWake();
        EXPECT_EQ(watch.look(at(103s, asleep)).hasSlept, !isSeenBefore);
        EXPECT_FALSE(watch.look(at(104s, asleep)).hasSlept);
    }
}

} // namespace
} // namespace cindertop
