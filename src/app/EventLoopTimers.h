#pragma once

#include "platform/Timers.h"

namespace cindertop {

/// Timers of the main thread's event loop, which must exist while they run. Whole milliseconds, rounded up,
/// and never early: what is due each 5 s would wait for a further tick if the ticks of 1 s came too soon.
class EventLoopTimers final : public Timers {
public:
    [[nodiscard]] std::unique_ptr<Timer> start(std::chrono::nanoseconds delay,
                                               std::function<void()> action) override;
};

} // namespace cindertop
