#pragma once

#include "platform/Clock.h"

namespace cindertop::fakes {

/// Stands still until it is moved.
class FakeClock final : public Clock {
public:
    Instant time{std::chrono::seconds(1'700'000'000)};
    std::chrono::nanoseconds ahead{};  ///< by what the wall clock has been set forth, or back
    std::chrono::nanoseconds asleep{}; ///< of the time that has passed

    Instant now() const override { return time + ahead; }

    Uptime uptime() const override {
        return {.awake = AwakeTime(time.time_since_epoch() - asleep), .asleep = asleep};
    }

    void advance(std::chrono::nanoseconds duration) { time += duration; }
};

} // namespace cindertop::fakes
