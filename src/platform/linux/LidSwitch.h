#pragma once

#include "platform/SourceStatus.h"
#include "platform/linux/BusProperty.h"
#include "platform/linux/DeviceFolder.h"
#include "platform/linux/FileReading.h"
#include "platform/linux/SystemBus.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace cindertop::linux_platform {

/// What SMBIOS calls the chassis, as a decimal number: true for the shapes with a lid (portable, laptop,
/// notebook, sub-notebook, convertible), false for the others, none for "other", "unknown" and no number.
std::optional<bool> doesSmbiosChassisFold(std::string_view chassisType);

/// The same for the chassis-type of a device tree: "laptop", "convertible", "tablet", "embedded", ...
std::optional<bool> doesDeviceTreeChassisFold(std::string_view chassisType);

/// Whether the firmware says that the machine has a lid; none when it does not tell its shape.
std::optional<bool> doesChassisFold(const Roots& roots);

/// True for "state:      closed", false for "state:      open", else none.
std::optional<bool> parseLidState(std::string_view text);

/// Whether the switches of an input device, as its capabilities list them ("0", "40001", words of hexadecimal
/// digits with the lowest last), are or hold that of a lid.
bool hasLidSwitch(std::string_view switches);

/// Whether the laptop is shut: from logind, else from the ACPI lid. Belongs to the thread of its bus.
class LidSwitch {
public:
    /// logind announces the lid from version 256 on; before, it is asked again after 2 s.
    explicit LidSwitch(SystemBus& bus, const Roots& roots = {});

    /// None without a lid that anyone knows of.
    std::optional<bool> isClosed();

    /// Whether the machine has a lid at all: one of ACPI, or one among the input devices. Costs a few reads
    /// every half minute where there is none.
    bool isFitted();

    /// "lid", as the latest read found it.
    SourceStatus status() const;

private:
    std::optional<bool> readAcpiLid() const;

    bool isAmongInputs() const;

    BusProperty logind_;
    std::filesystem::path folder_;
    DeviceFolder inputs_;
    bool isFitted_ = false;
    std::string reason_ = "not asked: no built-in display is on";
    bool isAvailable_ = false;
};

} // namespace cindertop::linux_platform
