#pragma once

#include "platform/HostStatistics.h"
#include "support/WideInteger.h"

#include <optional>
#include <string>

namespace cindertop {

/// Turns tick counters into the thousandths of the machine that a scenario counts in. What one interval
/// leaves over goes into the next, so that the sums stay true.
class LoadRecorder {
public:
    /// The load between two readings as JSON, null when the system refused the first one. Idle when it
    /// refused the second one or a counter was reset.
    std::string between(const std::optional<HostCpuLoad>& from, const std::optional<HostCpuLoad>& to);

private:
    /// Ticks × 1000 that are not written yet.
    struct Owed {
        WideUnsigned user{};
        WideUnsigned system{};
        WideUnsigned nice{};
    };

    Owed owed_;
};

} // namespace cindertop
