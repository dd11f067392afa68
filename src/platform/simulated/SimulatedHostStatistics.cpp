#include "platform/simulated/SimulatedHostStatistics.h"

namespace cindertop::simulated {

std::optional<HostCpuLoad> SimulatedHostStatistics::cpuLoad() const {
    const auto elapsed = timeline_.elapsed();
    const auto frameIndex = timeline_.frameIndexAt(elapsed);
    if (!timeline_.scenario().frames[frameIndex].load) {
        return std::nullopt;
    }
    return history_.ticksAt(frameIndex, elapsed);
}

} // namespace cindertop::simulated
