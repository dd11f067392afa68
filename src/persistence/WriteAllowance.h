#pragma once

#include "platform/MonotonicClock.h"

#include <chrono>
#include <cstddef>

namespace cindertop {

/// How much may be written: what comes now and then at once, what comes without end 2 MB an hour. Without a
/// clock there is no limit.
class WriteAllowance {
public:
    explicit WriteAllowance(MonotonicClock clock);

    /// Whether the next write may begin. One write may overdraw the allowance, which then holds up the next.
    bool permits();
    void spend(std::size_t bytes);

private:
    MonotonicClock clock_;
    std::chrono::nanoseconds latest_{0};
    double bytes_;
};

} // namespace cindertop
