#pragma once

#include <chrono>
#include <functional>

namespace cindertop::linux_platform {

/// Time that only goes forward, from an unnamed start: for intervals between reads. Any thread may call it.
using MonotonicClock = std::function<std::chrono::nanoseconds()>;

/// The kernel's steady clock.
inline MonotonicClock steadyClock() {
    return [] { return std::chrono::nanoseconds(std::chrono::steady_clock::now().time_since_epoch()); };
}

} // namespace cindertop::linux_platform
