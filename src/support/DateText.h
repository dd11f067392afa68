#pragma once

#include "support/Instant.h"

#include <chrono>
#include <ctime>
#include <memory>
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

/// The instant in the user's time zone (TZ, else the system's), as that is now. Any thread may call it.
std::tm localTime(Instant instant);

/// Names the days of the Gregorian calendar in one time zone. Immutable; any thread may use it.
class CalendarDays {
public:
    /// `timeZone` is an IANA name ("Asia/Kolkata"); an unknown one counts as UTC.
    explicit CalendarDays(const std::string& timeZone);
    /// The time zone of the user (TZ, else the system's) as it is whenever a day is asked for: a traveller's
    /// changes count at once.
    static CalendarDays ofUser();

    /// The day on which the instant falls there: "2025-03-05".
    std::string identifier(Instant instant) const;

private:
    struct Zone;
    explicit CalendarDays(std::shared_ptr<const Zone> zone);
    std::shared_ptr<const Zone> zone_; ///< none: the user's
};

} // namespace cindertop
