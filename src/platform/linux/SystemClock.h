#pragma once

#include "platform/Clock.h"

#include <chrono>

namespace cindertop::linux_platform {

/// The kernel's clocks.
class SystemClock final : public Clock {
public:
    Instant now() const override { return std::chrono::system_clock::now(); }

    /// Two reads, so that the time asleep is off by what comes between them: usually less than a microsecond.
    Uptime uptime() const override;
};

/// The kernel's steady clock.
inline MonotonicClock steadyClock() {
    return [] { return std::chrono::nanoseconds(std::chrono::steady_clock::now().time_since_epoch()); };
}

} // namespace cindertop::linux_platform
