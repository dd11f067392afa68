#pragma once

#include "platform/linux/FileReading.h"

#include <cstdint>
#include <expected>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cindertop::linux_platform {

/// One attribute of a supply by its name in sysfs ("charge_now").
struct SupplyAttribute {
    std::string name;
    std::string text;

    bool operator==(const SupplyAttribute&) const = default;
};

/// One folder of /sys/class/power_supply. Absent: the driver does not say, could not say now, or said nothing
/// that makes sense.
struct PowerSupply {
    enum class Kind { mains, usb, wireless, ups, battery, other };
    enum class Status { charging, discharging, notCharging, full };

    std::optional<Kind> kind;
    bool belongsToDevice = false; ///< the battery of a mouse or headset, not of the machine
    std::optional<bool> isPresent;
    std::optional<bool> isOnline;
    std::optional<Status> status;                      ///< "Unknown" is absent
    std::optional<std::int64_t> capacity;              ///< percent
    std::optional<std::int64_t> chargeNow, chargeFull; ///< µAh, never negative
    std::optional<std::int64_t> energyNow, energyFull; ///< µWh, never negative
    std::optional<std::int64_t> temperature;           ///< tenths of a degree Celsius, fits 32 bits

    bool operator==(const PowerSupply&) const = default;

    /// A battery that runs this machine and is in its bay.
    bool isSystemBattery() const;
    /// Something outside the machine that can power it: a mains, USB or wireless supply.
    bool isExternal() const;
};

/// The lines of a supply's `uevent` with their names in small letters and without the prefix.
std::vector<SupplyAttribute> parseSupplyUevent(std::string_view text);

/// A later attribute of the same name replaces an earlier one; names without a meaning here are passed over.
PowerSupply makePowerSupply(const std::vector<SupplyAttribute>& attributes);

/// The supplies below `folder`, in natural order; those of devices are left out.
///
/// A supply's `uevent` holds all its attributes and costs one open, where the attributes one by one cost ten.
/// The kernel leaves out of it only what the driver has no value for (ENODEV, ENODATA). But any other error
/// of any attribute empties the whole text, and some kernels do not write the type into it: a text without
/// the type is completed from the single attributes.
std::expected<std::vector<PowerSupply>, FileError> readPowerSupplies(const std::filesystem::path& folder);

} // namespace cindertop::linux_platform
