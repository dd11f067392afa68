#pragma once

#include "support/Instant.h"

#include <chrono>
#include <functional>

namespace cindertop {

/// For how long the machine has run. Setting the wall clock changes neither.
struct Uptime {
    AwakeTime awake;                 ///< stands still while the machine sleeps
    std::chrono::nanoseconds asleep; ///< all the time that it has slept

    bool operator==(const Uptime&) const = default;
};

/// The source of time. Any thread may ask it.
class Clock {
public:
    virtual ~Clock() = default;
    /// The wall clock, which people and network services set back and forth.
    virtual Instant now() const = 0;
    virtual Uptime uptime() const = 0;
};

/// The uptime of a machine that never sleeps and whose wall clock is never set.
constexpr Uptime sleeplessUptime(Instant now) {
    return {.awake = AwakeTime(now.time_since_epoch()), .asleep = std::chrono::nanoseconds::zero()};
}

/// Time that only moves forward, from an unspecified start: for durations. Any thread may call it.
using MonotonicClock = std::function<std::chrono::nanoseconds()>;

} // namespace cindertop
