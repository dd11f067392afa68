#pragma once

#include "platform/PowerSources.h"
#include "platform/SourceStatus.h"
#include "platform/linux/FileReading.h"
#include "platform/linux/PowerSupply.h"
#include "platform/linux/SystemClock.h"

#include <expected>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cindertop::linux_platform {

/// The supplies of /sys/class/power_supply, all batteries of the machine as one entry of the class
/// "IOPMPowerSource"; every other class is empty. Called from one thread at a time.
///
/// Asking a battery can take its controller milliseconds, so one read serves all answers until 100 ms behind
/// its end: the source and the entry of one tick come from the same moment, however long the read took.
class LinuxPowerSources final : public PowerSources {
public:
    explicit LinuxPowerSources(const Roots& roots = {}, MonotonicClock clock = steadyClock());

    std::optional<std::string> providingPowerSourceType() const override;
    std::unique_ptr<PowerSourceIterator> matchingServices(std::string_view className) const override;

    /// "power supplies", as the latest read found them.
    SourceStatus status() const;

private:
    using Supplies = std::expected<std::vector<PowerSupply>, FileError>;

    struct Reading {
        std::chrono::nanoseconds endedAt;
        Supplies supplies;
    };

    const Supplies& supplies() const;

    mutable PowerSupplyFolder folder_;
    MonotonicClock clock_;
    mutable std::optional<Reading> latest_;
};

} // namespace cindertop::linux_platform
