#include "platform/simulated/StartText.h"

#include "support/DateText.h"

#include <algorithm>
#include <string>

namespace cindertop::simulated {

namespace {

constexpr std::size_t wholeSecondsLength = 19; // without the "Z"
constexpr std::size_t mostDecimals = 6;
constexpr std::size_t nanosecondDecimals = 9;

constexpr Instant firstInstant = std::chrono::sys_days(std::chrono::year(1678) / std::chrono::January / 1);
constexpr Instant lastInstant =
    Instant(std::chrono::sys_days(std::chrono::year(2262) / std::chrono::January / 1)) -
    std::chrono::nanoseconds(1);

/// ".25" is 250,000,000; no text is 0.
std::optional<std::chrono::nanoseconds> parseFraction(std::string_view text) {
    if (text.empty()) {
        return std::chrono::nanoseconds::zero();
    }
    const auto digits = text.substr(1);
    if (text.front() != '.' || digits.empty() || digits.size() > mostDecimals) {
        return std::nullopt;
    }
    std::int64_t value = 0;
    for (std::size_t index = 0; index < nanosecondDecimals; ++index) {
        const char digit = index < digits.size() ? digits[index] : '0';
        if (digit < '0' || digit > '9') {
            return std::nullopt;
        }
        value = value * 10 + (digit - '0');
    }
    return std::chrono::nanoseconds(value);
}

} // namespace

std::optional<Instant> parseStart(std::string_view text) {
    if (text.size() <= wholeSecondsLength || !text.ends_with('Z')) {
        return std::nullopt;
    }
    const auto second = parseUtcText(std::string(text.substr(0, wholeSecondsLength)) + "Z");
    const auto fraction =
        parseFraction(text.substr(wholeSecondsLength, text.size() - wholeSecondsLength - 1));
    if (!second || !fraction || !isInRange(*second, *fraction)) {
        return std::nullopt;
    }
    return *second + *fraction;
}

bool isInRange(Instant start, std::chrono::nanoseconds sinceStart) {
    std::int64_t nanoseconds = 0;
    if (__builtin_add_overflow(start.time_since_epoch().count(), sinceStart.count(), &nanoseconds)) {
        return false;
    }
    const Instant moment{std::chrono::nanoseconds(nanoseconds)};
    return moment >= firstInstant && moment <= lastInstant;
}

} // namespace cindertop::simulated
