#include "replay/ScaledTime.h"

#include <chrono>
#include <utility>

namespace cindertop::replay {

namespace {

/// At most what nanoseconds can count, some centuries.
std::chrono::nanoseconds scaled(std::chrono::nanoseconds duration, double factor) {
    constexpr auto longest = std::chrono::nanoseconds::max();
    const auto product = duration * factor;
    return product < longest ? std::chrono::duration_cast<std::chrono::nanoseconds>(product) : longest;
}

} // namespace

ScaledTime::ScaledTime(Instant start, double speed, Timers& timers)
    : start_(start), speed_(speed), timers_(timers), began_(std::chrono::steady_clock::now()) {}

Instant ScaledTime::now() const {
    return start_ + scaled(std::chrono::steady_clock::now() - began_, speed_);
}

std::unique_ptr<Timer> ScaledTime::start(std::chrono::nanoseconds delay, std::function<void()> action) {
    return timers_.start(scaled(delay, 1 / speed_), std::move(action));
}

} // namespace cindertop::replay
