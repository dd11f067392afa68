#pragma once

#include "cpu/ProcessCPUReading.h"
#include "cpu/ProcessOffender.h"
#include "support/Wording.h"

#include <optional>
#include <string_view>

namespace cindertop {

/// Work of the system that is known by the name of the process that does it.
enum class BackgroundWork { indexing, softwareUpdate, securityCheck };

/// The work that a process of this name does on such a system; none for every other name. The name is in
/// lower case.
std::optional<BackgroundWork> backgroundWork(std::string_view lowerCasedName, OperatingSystem system);

/// The kind of work that a process does on such a system, told from its name, its application's identifier
/// and display name (upper and lower case alike), and from whether it belongs to the system. Always the same
/// answer for the same facts.
ProcessOffenderCategory classify(const ProcessCPUReading& reading, OperatingSystem system);

} // namespace cindertop
