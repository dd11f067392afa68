#pragma once

#include "platform/HostStatistics.h"
#include "support/Instant.h"
#include "support/WideInteger.h"

#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>

namespace cindertop {

/// One reading of the machine's CPU tick counters, all processors together.
struct SystemCPUTimeSnapshot {
    std::uint64_t user{};
    std::uint64_t system{};
    std::uint64_t idle{};
    std::uint64_t nice{}; ///< user mode at lowered priority: busy time
    Instant measuredAt{};

    constexpr WideUnsigned activeTicks() const { return WideUnsigned{user} + system + nice; }

    constexpr WideUnsigned totalTicks() const { return activeTicks() + idle; }

    bool operator==(const SystemCPUTimeSnapshot&) const = default;
};

/// Reads the machine's CPU tick counters. Called from the engine thread.
class SystemCPUTimeProviding {
public:
    virtual ~SystemCPUTimeProviding() = default;
    /// The counters now, labelled with the caller's instant; none when the system refuses.
    virtual std::optional<SystemCPUTimeSnapshot> snapshot(Instant at) const = 0;
};

/// Takes the counters from the host statistics, which must outlive it.
class DarwinSystemCPUTimeProvider final : public SystemCPUTimeProviding {
public:
    explicit DarwinSystemCPUTimeProvider(const HostStatistics& statistics);

    std::optional<SystemCPUTimeSnapshot> snapshot(Instant at) const override;

private:
    const HostStatistics* statistics_;
};

/// Measures how busy the machine was between two calls. Runs one call at a time, from whatever thread it
/// comes.
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
