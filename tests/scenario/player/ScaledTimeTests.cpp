#include "scenario/player/ScaledTime.h"

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <optional>

namespace cindertop::replay {
namespace {

using namespace std::chrono_literals;

/// Keeps the real delay that was asked for last; no timer ever runs.
class NotedTimers final : public Timers {
public:
    std::optional<std::chrono::nanoseconds> delay;

    std::unique_ptr<Timer> start(std::chrono::nanoseconds asked, std::function<void()> /*action*/) override {
        delay = asked;
        return nullptr;
    }
};

/// What passes in a test is far less than an hour.
TEST(ScaledTime, DividesDelaysAndStandsStillAfterItsEnd) {
    constexpr Instant start{1'800'000'000s};
    constexpr Instant longAgo{-8'000'000'000s};
    constexpr auto never = std::chrono::nanoseconds::max();

    struct Case {
        Instant start;
        double speed;
        Instant last;
        std::chrono::nanoseconds delay;
        std::optional<std::chrono::nanoseconds> expected; ///< none: never
    };

    for (const auto& [from, speed, last, delay, expected] : std::to_array<Case>({
             {start, 60, Instant::max(), 30s, 500ms},
             {start, 0.001, Instant::max(), 1s, 1000s},
             {start, 0.001, Instant::max(), never / 2, never},
             {longAgo, 2, Instant::max(), 1s, 500ms},
             {start, 1, start + 2h, 3h, {}},
             {start, 1, start, 0s, 0s},
             {start, 1, start, 1ns, {}},
         })) {
        NotedTimers timers;
        ScaledTime time(from, speed, timers, last);
        EXPECT_GE(time.now(), from);
        EXPECT_LE(time.now(), last);
        EXPECT_LE(time.now(), from + 1h * speed);
        [[maybe_unused]] const auto timer = time.start(delay, [] {});
        EXPECT_EQ(timers.delay, expected) << speed << " × " << delay.count();
    }
}

} // namespace
} // namespace cindertop::replay
