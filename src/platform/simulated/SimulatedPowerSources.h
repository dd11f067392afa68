#pragma once

#include "platform/PowerSources.h"
#include "platform/simulated/Timeline.h"

#include <utility>

namespace cindertop::simulated {

/// The entries of a walk are those of the frame in force when it began.
class SimulatedPowerSources final : public PowerSources {
public:
    explicit SimulatedPowerSources(Timeline timeline) : timeline_(std::move(timeline)) {}

    std::optional<std::string> providingPowerSourceType() const override;
    std::unique_ptr<PowerSourceIterator> matchingServices(std::string_view className) const override;

private:
    Timeline timeline_;
};

} // namespace cindertop::simulated
