#pragma once

#include "platform/HostStatistics.h"
#include "platform/simulated/LoadHistory.h"
#include "platform/simulated/Timeline.h"

#include <utility>

namespace cindertop::simulated {

class SimulatedHostStatistics final : public HostStatistics {
public:
    explicit SimulatedHostStatistics(Timeline timeline)
        : timeline_(std::move(timeline)), history_(timeline_.scenario()) {}

    std::optional<HostCpuLoad> cpuLoad() const override;

private:
    Timeline timeline_;
    LoadHistory history_;
};

} // namespace cindertop::simulated
