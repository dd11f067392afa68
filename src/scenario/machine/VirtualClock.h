#pragma once

#include "platform/Clock.h"
#include "platform/Timers.h"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <utility>

namespace cindertop::simulated {

/// Time that passes only when it is told to. Any thread may ask for it; the rest belongs to one thread.
/// Timers may outlive the clock.
class VirtualClock final : public Clock, public Timers {
public:
    explicit VirtualClock(Instant start) : now_(start) {}

    Instant now() const override { return now_; }

    Uptime uptime() const override { return sleeplessUptime(now()); }

    /// Runs no timer. An earlier instant is ignored.
    void advanceTo(Instant instant);

    [[nodiscard]] std::unique_ptr<Timer> start(std::chrono::nanoseconds delay,
                                               std::function<void()> action) override;

    /// When the next timer is due, now or earlier included; none without timers.
    std::optional<Instant> nextDue() const;

    /// Runs the one timer that is due first, of equal ones the one started first. False: none is due yet.
    bool runNextDue();

private:
    /// The instant, then the order of the starts.
    using Turn = std::pair<Instant, std::uint64_t>;
    using Queue = std::map<Turn, std::function<void()>>;

    class QueuedTimer;

    std::atomic<Instant> now_;
    std::uint64_t started_ = 0;
    std::shared_ptr<Queue> queue_ = std::make_shared<Queue>();
};

} // namespace cindertop::simulated
