#include "terminal/ValueText.h"

#include "support/DateText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <ctime>

namespace cindertop::cli {

std::string fixedText(double value, int decimals) {
    // The largest double has 309 digits before the point.
    std::array<char, 400> buffer{};
    const auto written = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                       std::chars_format::fixed, decimals);
    std::string text(buffer.data(), written.ptr);
    const bool isZero = text.find_first_not_of("-0.") == std::string::npos;
    if (isZero && text.starts_with('-')) {
        text.erase(0, 1);
    }
    return text;
}

std::string percentText(double percent) {
    return percent > 0 && percent < 0.05 ? "<0.1 %" : fixedText(percent, 1) + " %";
}

std::string durationText(double seconds) {
    constexpr double longest = 1e12; // some thirty thousand years, far inside 64 bits
    const auto whole = std::isnan(seconds) ? 0 : static_cast<std::int64_t>(std::clamp(seconds, 0.0, longest));
    const auto hours = whole / 3600;
    const auto minutes = whole / 60 % 60;
    if (hours > 0) {
        return std::to_string(hours) + " h " + std::to_string(minutes) + " min";
    }
    if (minutes > 0) {
        return std::to_string(minutes) + " min " + std::to_string(whole % 60) + " s";
    }
    return std::to_string(whole) + " s";
}

std::string localTimeOfDay(Instant instant) {
    const auto parts = localTime(instant);
    std::array<char, 16> buffer{};
    return {buffer.data(), std::strftime(buffer.data(), buffer.size(), "%H:%M:%S", &parts)};
}

std::string localDateAndTime(Instant instant) {
    const auto parts = localTime(instant);
    std::array<char, 32> buffer{};
    return {buffer.data(), std::strftime(buffer.data(), buffer.size(), "%Y-%m-%d %H:%M:%S", &parts)};
}

} // namespace cindertop::cli
