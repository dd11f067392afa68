#pragma once

#include "support/Instant.h"

#include <memory>
#include <string>

namespace cindertop {

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
