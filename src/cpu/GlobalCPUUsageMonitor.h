#pragma once

#include "cpu/SystemCPUTimeProviding.h"
#include "cpu/SystemCPUTimeSnapshot.h"
#include "support/Instant.h"

#include <memory>
#include <mutex>
#include <optional>

namespace cindertop {

/// Tells how busy the machine was between two calls. Runs one call at a time, from whatever thread it comes.
class GlobalCPUUsageMonitor {
public:
    /// `provider` may not be null.
    explicit GlobalCPUUsageMonitor(std::unique_ptr<const SystemCPUTimeProviding> provider);

    /// The share of CPU time that was not idle since the previous call, 0 to 100. None on the first call,
    /// after a refused one, when no tick has passed and when a counter ran backwards; such a call starts the
    /// next interval.
    std::optional<double> sample(Instant at);

    /// Forgets the previous call, so that the next one only starts an interval.
    void reset();

private:
    std::mutex calls_;
    std::unique_ptr<const SystemCPUTimeProviding> provider_;
    std::optional<SystemCPUTimeSnapshot> previousSnapshot_;
};

} // namespace cindertop
