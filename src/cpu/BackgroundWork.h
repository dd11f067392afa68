#pragma once

#include "support/OperatingSystem.h"

#include <optional>
#include <string_view>

namespace cindertop {

/// Work of the system that is known by the name of the process that does it.
enum class BackgroundWork { indexing, softwareUpdate, securityCheck };

/// The work that a process of this name does on such a system; none for every other name. The name is in
/// lower case.
std::optional<BackgroundWork> backgroundWork(std::string_view lowerCasedName, OperatingSystem system);

} // namespace cindertop
