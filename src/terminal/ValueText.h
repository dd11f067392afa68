#pragma once

#include "support/Instant.h"

#include <string>

namespace cindertop::cli {

/// A number with a fixed count of decimals and "." as the point in every locale. Zero has no sign.
std::string fixedText(double value, int decimals);

/// A share of the whole machine: "12.4 %", and "<0.1 %" for what would round to nothing but is not nothing.
std::string percentText(double percent);

/// "45 s", "2 min 5 s", "1 h 3 min"; whole seconds, rounded down.
std::string durationText(double seconds);

/// "23:02:11" in the user's time zone.
std::string localTimeOfDay(Instant instant);

/// "2026-11-22 23:02:11" in the user's time zone.
std::string localDateAndTime(Instant instant);

} // namespace cindertop::cli
