#pragma once

#include "platform/Clock.h"
#include "platform/Timers.h"
#include "support/Instant.h"

namespace cindertop::replay {

/// Real time, made faster: from its construction on it runs from a start so many times as fast, perhaps until
/// it stands still. Any thread may ask for the time; timers belong to the main thread.
class ScaledTime final : public Clock, public Timers {
public:
    /// `speed` is above 0; `timers` of real time must outlive this. No timer that is due after `lastInstant`
    /// ever runs.
    ScaledTime(Instant start, double speed, Timers& timers, Instant lastInstant = Instant::max());

    Instant now() const override;

    Uptime uptime() const override { return sleeplessUptime(now()); }

    [[nodiscard]] std::unique_ptr<Timer> start(std::chrono::nanoseconds delay,
                                               std::function<void()> action) override;

private:
    Instant start_;
    double speed_;
    Timers& timers_;
    Instant lastInstant_;
    std::chrono::steady_clock::time_point began_;
};

} // namespace cindertop::replay
