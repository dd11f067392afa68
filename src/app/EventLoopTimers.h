#pragma once

#include "platform/Timers.h"

namespace cindertop {

/// Timers of the main thread's event loop, which must exist while they run. Whole milliseconds, rounded up;
/// a delay of a second or more may be a twentieth shorter or longer.
class EventLoopTimers final : public Timers {
public:
    [[nodiscard]] std::unique_ptr<Timer> start(std::chrono::nanoseconds delay,
                                               std::function<void()> action) override;
};

} // namespace cindertop
