#include "cpu/DarwinSystemCPUTimeProvider.h"

namespace cindertop {

DarwinSystemCPUTimeProvider::DarwinSystemCPUTimeProvider(const HostStatistics& statistics)
    : statistics_(&statistics) {}

std::optional<SystemCPUTimeSnapshot> DarwinSystemCPUTimeProvider::snapshot(Instant at) const {
    return statistics_->cpuLoad().transform([at](const HostCpuLoad& load) {
        return SystemCPUTimeSnapshot{
            .user = load.user,
            .system = load.system,
            .idle = load.idle,
            .nice = load.nice,
            .measuredAt = at,
        };
    });
}

} // namespace cindertop
