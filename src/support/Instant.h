#pragma once

#include <chrono>

namespace cindertop {

/// A wall-clock moment in whole nanoseconds since the Unix epoch (1678 to 2261).
using Instant = std::chrono::time_point<std::chrono::system_clock, std::chrono::nanoseconds>;

/// A length of time in seconds, in double precision.
using Seconds = std::chrono::duration<double>;

/// Earlier than every real moment. Compare with it, never subtract it: the difference overflows.
inline constexpr Instant distantPast = Instant::min();

/// The moment that stands for "not measured yet": 1970-01-01 00:00:00 UTC.
inline constexpr Instant unixEpoch{};

/// `later - earlier`, from the exact difference of their nanoseconds; negative when the clock went back.
constexpr Seconds secondsBetween(Instant earlier, Instant later) {
    return std::chrono::duration_cast<Seconds>(later - earlier);
}

/// The moment that long before; the distant past when no instant is so early.
inline Instant instantBefore(Instant instant, Seconds duration) {
    const auto available = std::chrono::duration_cast<Seconds>(instant.time_since_epoch()) -
                           std::chrono::duration_cast<Seconds>(distantPast.time_since_epoch());
    // Near the end of the range the double is up to a microsecond off.
    if (duration >= available - Seconds(1)) {
        return distantPast;
    }
    return instant - std::chrono::duration_cast<Instant::duration>(duration);
}

/// Counts the time during which the machine was awake. It has no `now`: only a `Clock` tells it.
struct AwakeClock {
    using duration = std::chrono::nanoseconds;
    using rep = duration::rep;
    using period = duration::period;
    using time_point = std::chrono::time_point<AwakeClock>;
    static constexpr bool is_steady = true; // NOLINT(readability-identifier-naming): the standard's name
};

/// A moment from which durations are counted. It stands still while the machine sleeps, and setting the
/// wall clock does not touch it. Its start is some moment of the past: only differences mean something.
using AwakeTime = AwakeClock::time_point;

} // namespace cindertop
