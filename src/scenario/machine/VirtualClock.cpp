#include "scenario/machine/VirtualClock.h"

#include <algorithm>

namespace cindertop::simulated {

class VirtualClock::QueuedTimer final : public Timer {
public:
    QueuedTimer(std::shared_ptr<Queue> queue, Turn turn) : queue_(std::move(queue)), turn_(std::move(turn)) {}

    /// What the action holds may cancel further timers, so it goes when the queue is whole again.
    ~QueuedTimer() override { const auto cancelled = queue_->extract(turn_); }

    QueuedTimer(const QueuedTimer&) = delete;
    QueuedTimer& operator=(const QueuedTimer&) = delete;

private:
    std::shared_ptr<Queue> queue_;
    Turn turn_;
};

void VirtualClock::advanceTo(Instant instant) {
    now_ = std::max(now(), instant);
}

std::unique_ptr<Timer> VirtualClock::start(std::chrono::nanoseconds delay, std::function<void()> action) {
    const Instant from = now();
    const bool isNever = delay > std::chrono::nanoseconds::zero() && from > Instant::max() - delay;
    const Instant due = isNever ? Instant::max() : from + std::max(delay, std::chrono::nanoseconds::zero());
    const Turn turn{due, started_++};
    queue_->emplace(turn, std::move(action));
    return std::make_unique<QueuedTimer>(queue_, turn);
}

std::optional<Instant> VirtualClock::nextDue() const {
    return queue_->empty() ? std::nullopt : std::optional(queue_->begin()->first.first);
}

bool VirtualClock::runNextDue() {
    const auto due = nextDue();
    if (!due || *due > now()) {
        return false;
    }
    // Taken out first: the action may destroy its timer and start others.
    const auto timer = queue_->extract(queue_->begin());
    timer.mapped()();
    return true;
}

} // namespace cindertop::simulated
