#pragma once

#include "platform/linux/Roots.h"

namespace cindertop::linux_platform {

/// Whether a chip of the machine tells the speed of a fan, be it 0. A chip whose device sleeps is not asked.
bool findFan(const Roots& roots);

} // namespace cindertop::linux_platform
