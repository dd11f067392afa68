#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace cindertop {

/// A fan that tells its speed.
struct FanReading {
    std::string name;                      ///< unique on its machine: "CPU Fan", "Fan 2"
    std::int64_t revolutionsPerMinute = 0; ///< 0: it stands still

    bool operator==(const FanReading&) const = default;
};

/// What one chip says it consumes.
struct ChipPowerReading {
    std::string name; ///< unique on its machine: "Graphics chip"
    double watts = 0; ///< never negative

    bool operator==(const ChipPowerReading&) const = default;
};

/// What the machine's meters say, apart from temperatures and the battery. Each part is empty where nothing
/// tells it.
struct MeterReadings {
    std::optional<double> machineWatts{}; ///< of the whole machine, whatever feeds it
    std::vector<ChipPowerReading> chips{};
    std::vector<FanReading> fans{};

    bool operator==(const MeterReadings&) const = default;
};

/// Asked from one thread at a time.
class HardwareMeters {
public:
    virtual ~HardwareMeters() = default;

    /// Whether somebody sees the answers. While nobody does, an implementation may read seldom.
    virtual void setObserved(bool /*isObserved*/) {}

    /// Never fails, and wakes no sleeping device.
    virtual MeterReadings read() = 0;
};

} // namespace cindertop
