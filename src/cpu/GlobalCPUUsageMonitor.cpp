#include "cpu/GlobalCPUUsageMonitor.h"

#include "support/WideInteger.h"

#include <algorithm>
#include <utility>

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

namespace {

std::optional<double> busyPercent(const SystemCPUTimeSnapshot& previous,
                                  const SystemCPUTimeSnapshot& current) {
    if (current.totalTicks() <= previous.totalTicks() || current.idle < previous.idle) {
        return std::nullopt;
    }
    const WideUnsigned totalDelta = current.totalTicks() - previous.totalTicks();
    const WideUnsigned idleDelta = current.idle - previous.idle;
    if (idleDelta > totalDelta) { // a busy counter alone was reset
        return std::nullopt;
    }
    const auto busy = static_cast<double>(totalDelta - idleDelta);
    return std::clamp(busy / static_cast<double>(totalDelta) * 100, 0.0, 100.0);
}

} // namespace

GlobalCPUUsageMonitor::GlobalCPUUsageMonitor(std::unique_ptr<const SystemCPUTimeProviding> provider)
    : provider_(std::move(provider)) {}

std::optional<double> GlobalCPUUsageMonitor::sample(Instant at) {
    const std::scoped_lock turn(calls_);
    const std::optional<SystemCPUTimeSnapshot> current = provider_->snapshot(at);
    const std::optional<SystemCPUTimeSnapshot> previous = std::exchange(previousSnapshot_, current);
    if (!current || !previous) {
        return std::nullopt;
    }
    return busyPercent(*previous, *current);
}

void GlobalCPUUsageMonitor::reset() {
    const std::scoped_lock turn(calls_);
    previousSnapshot_.reset();
}

} // namespace cindertop
