#pragma once

#include "support/Instant.h"

#include <string>

namespace cindertop::cli {

/// "23:02:11" in the user's time zone.
std::string localTimeOfDay(Instant instant);

/// "2026-11-22 23:02:11" in the user's time zone.
std::string localDateAndTime(Instant instant);

} // namespace cindertop::cli
