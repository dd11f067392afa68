#include "scenario/player/ScaledTime.h"

#include <algorithm>
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

class NeverTimer final : public Timer {};

} // namespace

ScaledTime::ScaledTime(Instant start, double speed, Timers& timers, Instant lastInstant)
    : start_(start),
      speed_(speed),
      timers_(timers),
      lastInstant_(lastInstant),
      began_(std::chrono::steady_clock::now()) {}

Instant ScaledTime::now() const {
    return std::min(start_ + scaled(std::chrono::steady_clock::now() - began_, speed_), lastInstant_);
}

std::unique_ptr<Timer> ScaledTime::start(std::chrono::nanoseconds delay, std::function<void()> action) {
    // From a time before 1970 it is too far to the last of all instants for nanoseconds to count.
    if (lastInstant_ != Instant::max() && delay > lastInstant_ - now()) {
        return std::make_unique<NeverTimer>();
    }
    return timers_.start(scaled(delay, 1 / speed_), std::move(action));
}

} // namespace cindertop::replay
