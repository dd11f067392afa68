#pragma once

#include "platform/ProcessInformation.h"
#include "platform/simulated/Timeline.h"

#include <utility>

namespace cindertop::simulated {

class SimulatedProcessInformation final : public ProcessInformation {
public:
    explicit SimulatedProcessInformation(Timeline timeline) : timeline_(std::move(timeline)) {}

    int thermalState() const override { return timeline_.frame().thermalState; }

    bool isLowPowerModeEnabled() const override { return timeline_.frame().power->isLowPowerModeEnabled; }

    int activeProcessorCount() const override { return timeline_.scenario().machine.processorCount; }

    std::int32_t processIdentifier() const override { return timeline_.scenario().ownProcessIdentifier; }

    std::optional<std::string> bundleIdentifier() const override {
        return timeline_.scenario().ownBundleIdentifier;
    }

private:
    Timeline timeline_;
};

} // namespace cindertop::simulated
