#include "support/CalendarDays.h"

#include "support/DateText.h"
#include "support/LocalTime.h"

#include <unicode/timezone.h>
#include <unicode/unistr.h>

#include <chrono>
#include <cstdint>
#include <utility>

namespace cindertop {

namespace {

std::chrono::sys_days localDay(Instant instant) {
    const auto parts = localTime(instant);
    return std::chrono::sys_days(std::chrono::year(parts.tm_year + 1900) /
                                 std::chrono::month(static_cast<unsigned>(parts.tm_mon + 1)) /
                                 std::chrono::day(static_cast<unsigned>(parts.tm_mday)));
}

} // namespace

struct CalendarDays::Zone {
    std::unique_ptr<const icu::TimeZone> rules;
};

CalendarDays::CalendarDays(std::shared_ptr<const Zone> zone) : zone_(std::move(zone)) {}

CalendarDays::CalendarDays(const std::string& timeZone)
    : CalendarDays(std::make_shared<const Zone>(Zone{std::unique_ptr<const icu::TimeZone>(
          icu::TimeZone::createTimeZone(icu::UnicodeString::fromUTF8(timeZone)))})) {}

CalendarDays CalendarDays::ofUser() {
    return CalendarDays(std::shared_ptr<const Zone>());
}

std::string CalendarDays::identifier(Instant instant) const {
    if (!zone_) {
        return dayText(localDay(instant));
    }
    const auto moment = std::chrono::floor<std::chrono::milliseconds>(instant.time_since_epoch());
    std::int32_t standard = 0;
    std::int32_t summer = 0;
    UErrorCode status = U_ZERO_ERROR;
    zone_->rules->getOffset(static_cast<UDate>(moment.count()), 0, standard, summer, status);
    if (U_FAILURE(status) != 0) {
        standard = summer = 0;
    }
    const auto local = moment + std::chrono::milliseconds(standard) + std::chrono::milliseconds(summer);
    return dayText(std::chrono::sys_days(std::chrono::floor<std::chrono::days>(local)));
}

} // namespace cindertop
