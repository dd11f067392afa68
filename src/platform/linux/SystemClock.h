#pragma once

#include "platform/Clock.h"

namespace cindertop::linux_platform {

/// The kernel's wall clock.
class SystemClock final : public Clock {
public:
    Instant now() const override { return std::chrono::system_clock::now(); }
};

} // namespace cindertop::linux_platform
