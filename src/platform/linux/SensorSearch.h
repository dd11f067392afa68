#pragma once

#include "platform/linux/FileReading.h"
#include "platform/linux/SensorNames.h"
#include "platform/linux/ThermalZones.h"

#include <filesystem>
#include <span>
#include <string>
#include <vector>

namespace cindertop::linux_platform {

/// A temperature somewhere below the sysfs root.
struct FoundSensor {
    SensorSource source;
    std::filesystem::path file;  ///< empty for a zone
    double unitsADegree;         ///< of the number in that file
    std::string zone;            ///< a zone's folder; empty for everything else
    std::filesystem::path power; ///< folder that tells how a chip's device sleeps; empty where none can
};

/// Every temperature of chips, zones and supplies, each thing once: the copies that the kernel makes of zones
/// and supplies as hwmon devices, and of supplies as zones, are passed over, and so are rotating disks and
/// the batteries of mice. Opens no file that touches hardware.
std::vector<FoundSensor> findSensors(const Roots& roots, std::span<const ThermalZoneIdentity> zones);

} // namespace cindertop::linux_platform
