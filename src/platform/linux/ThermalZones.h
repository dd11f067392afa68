#pragma once

#include "platform/SourceStatus.h"
#include "platform/TemperatureEvents.h"
#include "platform/linux/AttributeFile.h"
#include "platform/linux/DeviceFolder.h"
#include "platform/linux/FileReading.h"
#include "platform/linux/ReadingStamp.h"
#include "platform/linux/SystemClock.h"
#include "platform/linux/ThermalTrips.h"

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cindertop::linux_platform {

/// What all zones say together.
struct ThermalZoneReading {
    int state = -1;         ///< 0 nominal, 1 fair, 2 serious, 3 critical; -1 when no zone answers
    bool isAtLimit = false; ///< a hot trip that acts is crossed or a critical one at most 3 °C away

    bool operator==(const ThermalZoneReading&) const = default;
};

struct ThermalZoneIdentity {
    std::string name; ///< of its folder, "thermal_zone0"
    std::string type; ///< "acpitz", "x86_pkg_temp", "cpu-thermal", ...

    bool operator==(const ThermalZoneIdentity&) const = default;
};

/// The kernel's thermal zones. Types, trips and what is bound to them are cached and read again when a device
/// comes or goes, and every 30 s, because firmware and thermal daemons move trips; modes and temperatures are
/// read each time. Any thread may call.
class ThermalZones {
public:
    ThermalZones(const Roots& roots, MonotonicClock clock);

    /// Reads the zones that speak for the machine, unless that was done just now.
    ThermalZoneReading read();

    /// Every zone there is, in the order of their numbers.
    std::vector<ThermalZoneIdentity> zones();

    /// The temperature of one zone; none when there is no such zone or it has no answer now.
    std::optional<MilliCelsius> temperature(std::string_view zoneName);

    /// What the zone's trips do; empty for a zone that says nothing about the machine.
    TemperatureLimits limits(std::string_view zoneName);

    SourceStatus status() const;

private:
    struct Zone {
        ThermalZoneIdentity identity;
        HeatThresholds thresholds; ///< empty: the zone says nothing about the machine
        TemperatureLimits limits;
        AttributeFile mode;
        AttributeFile file;
        ReadingStamp readAt;
        std::optional<MilliCelsius> temperature; ///< of the latest read
    };

    void learnIfOutdated();
    std::optional<Zone> learn(const std::string& name) const;
    void learnTrips(Zone& zone) const;
    std::optional<MilliCelsius> temperatureOf(Zone& zone) const;
    void readTemperature(Zone& zone) const;
    ThermalZoneReading readAll();

    mutable std::mutex mutex_;
    MonotonicClock clock_;
    std::filesystem::path supplies_;
    std::optional<MilliCelsius> firmwareLimit_; ///< of the board's processor
    DeviceFolder folder_;
    std::vector<Zone> zones_;
    ReadingStamp readAt_;
    ThermalZoneReading reading_;
    std::size_t answering_ = 0; ///< of the zones that say something about the machine
};

} // namespace cindertop::linux_platform
