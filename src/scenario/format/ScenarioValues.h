#pragma once

#include "support/Instant.h"

#include <optional>
#include <string>
#include <string_view>

namespace cindertop::simulated {

/// "YYYY-MM-DDThh:mm:ssZ", the seconds with up to six decimals; none for another form, for a date that does
/// not exist and outside the years 1678 to 2261.
std::optional<Instant> parseStart(std::string_view text);

/// Whether the moment lies in those years.
bool isInRange(Instant start, std::chrono::nanoseconds sinceStart);

/// Whether it is an IANA name of a time zone, such as "Asia/Kolkata".
bool isTimeZoneName(const std::string& name);

/// Whether it has the form of a locale's name: a language, then parts behind "_" or "-", such as "en_GB".
bool isLocaleName(std::string_view name);

} // namespace cindertop::simulated
