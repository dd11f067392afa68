#pragma once

#include "platform/linux/SystemClock.h"

#include <chrono>

namespace cindertop::linux_platform {

/// Monotonic time that stands still until it is moved. It must outlive whoever got its `clock`.
class SteppedClock {
public:
    MonotonicClock clock() const {
        return [this] { return now_; };
    }

    void advance(std::chrono::nanoseconds step) { now_ += step; }

private:
    std::chrono::nanoseconds now_ = std::chrono::hours(1);
};

} // namespace cindertop::linux_platform
