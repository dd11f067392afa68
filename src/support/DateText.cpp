#include "support/DateText.h"

#include <unicode/timezone.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace cindertop {

namespace {

using std::chrono::ceil;
using std::chrono::days;
using std::chrono::floor;
using std::chrono::seconds;
using SecondInstant = std::chrono::sys_seconds;

constexpr SecondInstant firstSecond = ceil<seconds>(Instant::min());
constexpr SecondInstant lastSecond = floor<seconds>(Instant::max());

template <std::size_t Width>
void appendDigits(std::string& text, unsigned number) {
    std::array<char, Width> digits{};
    for (std::size_t place = Width; place-- > 0; number /= 10) {
        digits[place] = static_cast<char>('0' + number % 10);
    }
    text.append(digits.data(), Width);
}

void appendDay(std::string& text, std::chrono::sys_days day) {
    const std::chrono::year_month_day date(day);
    appendDigits<4>(text, static_cast<unsigned>(static_cast<int>(date.year())));
    text += '-';
    appendDigits<2>(text, static_cast<unsigned>(date.month()));
    text += '-';
    appendDigits<2>(text, static_cast<unsigned>(date.day()));
}

constexpr std::string_view form = "dddd-dd-ddTdd:dd:ddZ";

bool hasForm(std::string_view text) {
    return std::ranges::equal(
        text, form, [](char c, char wanted) { return wanted == 'd' ? c >= '0' && c <= '9' : c == wanted; });
}

/// The number that the digits of `text` make; there are only digits.
int number(std::string_view text) {
    int value = 0;
    for (const char digit : text) {
        value = value * 10 + (digit - '0');
    }
    return value;
}

} // namespace

std::string dayText(std::chrono::sys_days day) {
    std::string text;
    appendDay(text, day);
    return text;
}

void appendUtcText(std::string& text, Instant instant) {
    const SecondInstant second = std::max(floor<seconds>(instant), firstSecond);
    const auto day = floor<days>(second);
    const std::chrono::hh_mm_ss time(second - day);
    appendDay(text, day);
    text += 'T';
    appendDigits<2>(text, static_cast<unsigned>(time.hours().count()));
    text += ':';
    appendDigits<2>(text, static_cast<unsigned>(time.minutes().count()));
    text += ':';
    appendDigits<2>(text, static_cast<unsigned>(time.seconds().count()));
    text += 'Z';
}

std::string utcText(Instant instant) {
    std::string text;
    appendUtcText(text, instant);
    return text;
}

std::optional<Instant> parseUtcText(std::string_view text) {
    if (!hasForm(text)) {
        return std::nullopt;
    }
    const std::chrono::year_month_day date(
        std::chrono::year(number(text.substr(0, 4))),
        std::chrono::month(static_cast<unsigned>(number(text.substr(5, 2)))),
        std::chrono::day(static_cast<unsigned>(number(text.substr(8, 2)))));
    const int hour = number(text.substr(11, 2));
    const int minute = number(text.substr(14, 2));
    const int second = number(text.substr(17, 2));
    if (!date.ok() || hour > 23 || minute > 59 || second > 59) {
        return std::nullopt;
    }
    const SecondInstant moment = std::chrono::sys_days(date) + std::chrono::hours(hour) +
                                 std::chrono::minutes(minute) + seconds(second);
    if (moment < firstSecond || moment > lastSecond) {
        return std::nullopt;
    }
    return Instant(moment);
}

std::tm localTime(Instant instant) {
    const auto seconds = std::chrono::floor<std::chrono::seconds>(instant).time_since_epoch();
    const auto time = static_cast<std::time_t>(seconds.count());
    ::tzset(); // looks whether the system's zone is another one than before, which localtime_r does not
    std::tm parts{};
    ::localtime_r(&time, &parts); // fails for years beyond 32 bits only, which no instant reaches
    return parts;
}

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
