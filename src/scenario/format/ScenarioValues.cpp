#include "scenario/format/ScenarioValues.h"

#include "support/DateText.h"

#include <unicode/timezone.h>
#include <unicode/unistr.h>

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

namespace {

constexpr std::size_t longestPart = 8;

bool isAsciiLetter(char letter) {
    return (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z');
}

bool isAsciiLetterOrDigit(char letter) {
    return isAsciiLetter(letter) || (letter >= '0' && letter <= '9');
}

} // namespace

bool isTimeZoneName(const std::string& name) {
    icu::UnicodeString canonical;
    UBool isOfSystem = 0; // false for offsets such as "GMT+5", which ICU takes too
    auto status = U_ZERO_ERROR;
    icu::TimeZone::getCanonicalID(icu::UnicodeString::fromUTF8(name), canonical, isOfSystem, status);
    return U_SUCCESS(status) != 0 && isOfSystem != 0;
}

bool isLocaleName(std::string_view name) {
    const auto language = name.substr(0, name.find_first_of("_-"));
    if (language.size() < 2 || !std::ranges::all_of(language, isAsciiLetter)) {
        return false;
    }
    for (auto rest = name;;) {
        const auto part = rest.substr(0, rest.find_first_of("_-"));
        if (part.empty() || part.size() > longestPart || !std::ranges::all_of(part, isAsciiLetterOrDigit)) {
            return false;
        }
        if (part.size() == rest.size()) {
            return true;
        }
        rest.remove_prefix(part.size() + 1);
    }
}

} // namespace cindertop::simulated
