#pragma once

#include "platform/SourceStatus.h"
#include "platform/ThermalPressureNotifications.h"
#include "platform/linux/CpuCoolers.h"
#include "platform/linux/MachineHeat.h"
#include "platform/linux/ThrottleCounters.h"

#include <cstdint>
#include <mutex>
#include <optional>
#include <set>

namespace cindertop::linux_platform {

/// The raw pressure, 0 to 4, for a loss of processor speed (0 to 1) and the machine's heat; never less than
/// the heat.
std::uint64_t rawThermalPressure(double loss, const HeatReading& heat);

/// The thermal pressure of a Linux machine: how far heat slows its processors down, and how close it is
/// to its limits. Any thread may call. Statuses: 1 no such name, 2 no such token, 3 nothing on this
/// machine tells.
class LinuxThermalPressureNotifications : public ThermalPressureNotifications {
public:
    /// `heat` must outlive this object.
    LinuxThermalPressureNotifications(const Roots& roots, const MonotonicClock& clock, MachineHeat& heat);

    Registration registerCheck(std::string_view name) override;
    State state(std::int32_t token) override;
    void cancel(std::int32_t token) override;

    /// Whether heat slowed a processor down at the latest question; none where nothing tells. Asks the
    /// devices itself only before the first question.
    std::optional<bool> isSlowedByHeat();

    SourceStatus status() const;

private:
    struct Throttling {
        std::optional<CpuCoolers::Reading> coolers;
        std::optional<ThrottleCounters::Reading> counters;

        bool isKnown() const { return coolers || counters; }
    };

    void readThrottling();
    double loss() const;

    mutable std::mutex mutex_;
    MachineHeat& heat_;
    CpuCoolers coolers_;
    ThrottleCounters counters_;
    std::optional<Throttling> latest_;
    std::set<std::int32_t> tokens_;
    std::int32_t nextToken_ = 1;
};

} // namespace cindertop::linux_platform
