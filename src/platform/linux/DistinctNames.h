#pragma once

#include "platform/linux/SensorProducts.h"

#include <span>
#include <vector>

namespace cindertop::linux_platform {

/// Tells sensors of one name apart: a number or a name of their own follows it ("GPU 3", "CPU Zone 1").
void makeNamesDistinct(std::vector<SensorProduct>& products, std::span<const SensorSource> sources);

} // namespace cindertop::linux_platform
