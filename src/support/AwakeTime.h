#pragma once

#include <chrono>

namespace cindertop {

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
