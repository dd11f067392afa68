#pragma once

#include "platform/linux/FileReading.h"

#include <cstdint>
#include <expected>
#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
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
    std::optional<std::int64_t> powerNow;    ///< µW; by the kernel's rule negative: discharging, but
                                             ///< many drivers say the amount alone
    std::optional<std::int64_t> currentNow;  ///< µA, likewise
    std::optional<std::int64_t> voltageNow;  ///< µV, never negative
    std::optional<std::int64_t> temperature; ///< tenths of a degree Celsius, fits 32 bits

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

/// The supplies of one folder. Called from one thread at a time.
///
/// A supply's `uevent` holds all its attributes and costs one open, where the attributes one by one cost ten.
/// The kernel leaves out of it only what the driver has no value for (ENODEV, ENODATA). But any other error
/// of any attribute empties the whole text, and some kernels do not write the type into it: a text without
/// the type is completed from the single attributes.
///
/// The `uevent` of a mouse or headset asks the device: that wakes it, or takes seconds over Bluetooth. So
/// `scope` is read first, which drivers answer by themselves, and a supply of scope "Device" is not asked for
/// anything again while it is plugged in.
class PowerSupplyFolder {
public:
    explicit PowerSupplyFolder(std::filesystem::path folder) : folder_(std::move(folder)) {}

    const std::filesystem::path& path() const { return folder_; }

    /// The supplies of the machine now; those of devices are left out.
    std::expected<std::vector<PowerSupply>, FileError> read();

private:
    /// A name and an inode: a supply that is plugged in again gets another inode.
    using Identity = std::pair<std::string, std::uint64_t>;

    std::filesystem::path folder_;
    std::set<Identity> devices_; ///< those listed last whose scope is "Device"
};

} // namespace cindertop::linux_platform
