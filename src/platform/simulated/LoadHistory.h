#pragma once

#include "platform/HostStatistics.h"
#include "platform/simulated/Scenario.h"
#include "support/WideInteger.h"

#include <chrono>
#include <vector>

namespace cindertop::simulated {

/// The tick counters of a scenario's machine at any moment of it, from sums that are divided only when they
/// are read.
class LoadHistory {
public:
    explicit LoadHistory(const Scenario& scenario);

    /// `frameIndex` is that of the frame in force at `elapsed`.
    HostCpuLoad ticksAt(std::size_t frameIndex, std::chrono::nanoseconds elapsed) const;

private:
    /// Thousandths of the machine × nanoseconds.
    struct Sums {
        WideUnsigned user{};
        WideUnsigned system{};
        WideUnsigned idle{};
        WideUnsigned nice{};

        void add(const std::optional<ScenarioLoad>& load, std::chrono::nanoseconds time);
    };

    const Scenario* scenario_;
    std::vector<Sums> atFrameStart_;
};

} // namespace cindertop::simulated
