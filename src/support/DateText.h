#pragma once

#include "support/Instant.h"

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace cindertop {

/// "2025-03-05".
std::string dayText(std::chrono::sys_days day);

/// "2025-03-05T18:30:00Z": whole seconds, a fraction dropped towards the past. The first, unfinished second
/// of the range of `Instant` is written as the next one, so that whatever was written reads back.
std::string utcText(Instant instant);
void appendUtcText(std::string& text, Instant instant);

/// The moment of exactly that form; none for another form, a date that does not exist or one that `Instant`
/// cannot hold.
std::optional<Instant> parseUtcText(std::string_view text);

} // namespace cindertop
