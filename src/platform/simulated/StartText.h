#pragma once

#include "support/Instant.h"

#include <optional>
#include <string_view>

namespace cindertop::simulated {

/// "YYYY-MM-DDThh:mm:ssZ", the seconds with up to six decimals; none for another form, for a date that does
/// not exist and outside the years 1678 to 2261.
std::optional<Instant> parseStart(std::string_view text);

/// Whether the moment lies in those years.
bool isInRange(Instant start, std::chrono::nanoseconds sinceStart);

} // namespace cindertop::simulated
