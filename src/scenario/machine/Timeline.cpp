#include "scenario/machine/Timeline.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace cindertop::simulated {

Timeline::Timeline(std::shared_ptr<const Scenario> scenario, const Clock& clock)
    : scenario_(std::move(scenario)), clock_(&clock) {}

std::chrono::nanoseconds Timeline::elapsed() const {
    const Instant now = clock_->now();
    if (now <= scenario_->start) {
        return std::chrono::nanoseconds::zero();
    }
    std::int64_t elapsed = 0; // two instants may lie further apart than a duration can hold
    if (__builtin_sub_overflow(now.time_since_epoch().count(), scenario_->start.time_since_epoch().count(),
                               &elapsed)) {
        return std::chrono::nanoseconds::max();
    }
    return std::chrono::nanoseconds(elapsed);
}

std::size_t Timeline::frameIndexAt(std::chrono::nanoseconds elapsed) const {
    const auto later = std::ranges::upper_bound(scenario_->frames, elapsed, {}, &ScenarioFrame::at);
    return static_cast<std::size_t>(later - scenario_->frames.begin()) - 1;
}

} // namespace cindertop::simulated
