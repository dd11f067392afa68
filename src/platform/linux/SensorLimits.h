#pragma once

#include "platform/TemperatureEvents.h"

#include <filesystem>
#include <string_view>

namespace cindertop::linux_platform {

/// What a chip's driver says about the sensor of this file ("temp1_input"). "crit" means another thing with
/// each driver, so only chips whose meaning is documented answer: processors and graphics are slowed down
/// there. A chip whose device sleeps answers from the driver's memory.
TemperatureLimits chipLimits(std::string_view chip, const std::filesystem::path& file);

} // namespace cindertop::linux_platform
