#pragma once

#include "platform/MonotonicClock.h"

#include <chrono>

namespace cindertop::linux_platform {

/// The kernel's steady clock.
inline MonotonicClock steadyClock() {
    return [] { return std::chrono::nanoseconds(std::chrono::steady_clock::now().time_since_epoch()); };
}

} // namespace cindertop::linux_platform
