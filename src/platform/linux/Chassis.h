#pragma once

#include "platform/linux/Roots.h"

#include <optional>
#include <string_view>

namespace cindertop::linux_platform {

/// What SMBIOS calls the chassis, as a decimal number: true for the shapes with a lid (portable, laptop,
/// notebook, sub-notebook, convertible), false for the others, none for "other", "unknown" and no number.
std::optional<bool> doesSmbiosChassisFold(std::string_view chassisType);

/// The same for the chassis-type of a device tree: "laptop", "convertible", "tablet", "embedded", ...
std::optional<bool> doesDeviceTreeChassisFold(std::string_view chassisType);

/// Whether the firmware says that the machine has a lid; none when it does not tell its shape.
std::optional<bool> doesChassisFold(const Roots& roots);

} // namespace cindertop::linux_platform
