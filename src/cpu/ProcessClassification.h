#pragma once

#include "cpu/ProcessCPUReading.h"
#include "cpu/ProcessOffenderCategory.h"
#include "support/OperatingSystem.h"

namespace cindertop {

/// The kind of work that a process does on such a system, told from its name, its application's identifier
/// and display name (upper and lower case alike), and from whether it belongs to the system. Always the same
/// answer for the same facts.
ProcessOffenderCategory classify(const ProcessCPUReading& reading, OperatingSystem system);

} // namespace cindertop
