#pragma once

#include "cpu/SystemCPUTimeProviding.h"
#include "platform/HostStatistics.h"

namespace cindertop {

/// Takes the counters from the host statistics, which must outlive it.
class DarwinSystemCPUTimeProvider final : public SystemCPUTimeProviding {
public:
    explicit DarwinSystemCPUTimeProvider(const HostStatistics& statistics);

    std::optional<SystemCPUTimeSnapshot> snapshot(Instant at) const override;

private:
    const HostStatistics* statistics_;
};

} // namespace cindertop
