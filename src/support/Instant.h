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

} // namespace cindertop
