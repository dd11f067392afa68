#pragma once

#include "platform/Clock.h"
#include "scenario/format/Scenario.h"

#include <chrono>
#include <cstddef>
#include <memory>

namespace cindertop::simulated {

/// Where a scenario stands, by a clock that must outlive this. Before its start it stands at 0; after its end
/// the last frame continues. Any thread may ask.
class Timeline {
public:
    Timeline(std::shared_ptr<const Scenario> scenario, const Clock& clock);

    const Scenario& scenario() const { return *scenario_; }

    /// Since the start, never negative.
    std::chrono::nanoseconds elapsed() const;

    /// The frame in force now.
    const ScenarioFrame& frame() const { return scenario_->frames[frameIndexAt(elapsed())]; }

    std::size_t frameIndexAt(std::chrono::nanoseconds elapsed) const;

private:
    std::shared_ptr<const Scenario> scenario_;
    const Clock* clock_;
};

} // namespace cindertop::simulated
