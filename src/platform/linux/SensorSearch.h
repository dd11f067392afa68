#pragma once

#include "platform/linux/Roots.h"
#include "platform/linux/SensorProducts.h"
#include "platform/linux/ThermalZones.h"

#include <filesystem>
#include <span>
#include <string>
#include <vector>

namespace cindertop::linux_platform {

/// A temperature somewhere below the sysfs root.
struct FoundSensor {
    SensorSource source;
    std::filesystem::path file; ///< of a chip (thousandths of a degree) or a supply (tenths)
    std::string zone;           ///< a zone's folder; `file` is empty then
    std::filesystem::path
        runtimeStatus; ///< says whether the chip's device sleeps; empty for zones and supplies
};

/// Every temperature of chips, zones and supplies, each thing once: the copies that the kernel makes of zones
/// and supplies as hwmon devices, and of supplies as zones, are passed over. Opens no file that touches
/// hardware.
std::vector<FoundSensor> findSensors(const Roots& roots, std::span<const ThermalZoneIdentity> zones);

} // namespace cindertop::linux_platform
