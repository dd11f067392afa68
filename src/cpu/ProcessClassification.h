#pragma once

#include "cpu/ProcessCPUReading.h"
#include "cpu/ProcessOffenderCategory.h"

namespace cindertop {

/// The kind of work that a process does, told from its name, its application's identifier and display name
/// (upper and lower case alike), and from whether it belongs to the system. Always the same answer for the
/// same five facts.
ProcessOffenderCategory classify(const ProcessCPUReading& reading);

} // namespace cindertop
