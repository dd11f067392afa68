#pragma once

#include "platform/linux/ThermalTrips.h"

#include <optional>
#include <string>
#include <vector>

namespace cindertop::linux_platform {

/// Where the firmware of a board slows the processor down below every trip that the kernel knows, by the
/// board's device tree. None for boards that are not known to do so.
std::optional<MilliCelsius> firmwareLimit(const std::vector<std::string>& compatible);

} // namespace cindertop::linux_platform
