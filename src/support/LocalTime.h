#pragma once

#include "support/Instant.h"

#include <ctime>

namespace cindertop {

/// The instant in the user's time zone (TZ, else the system's), as that is now. Any thread may call it.
std::tm localTime(Instant instant);

} // namespace cindertop
