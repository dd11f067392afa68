#include "scenario/recorder/ScenarioText.h"

#include "report/Json.h"

#include <nlohmann/json.hpp>

#include <cstdint>

namespace cindertop {

namespace {

constexpr std::uint64_t nanosecondsInSecond = 1'000'000'000;
constexpr std::size_t nanosecondDigits = 9;

} // namespace

std::string jsonString(std::string_view text) {
    return compactText(Json(text));
}

std::string secondsText(std::chrono::nanoseconds time) {
    const bool isNegative = time < std::chrono::nanoseconds::zero();
    const auto count = static_cast<std::uint64_t>(time.count());
    const std::uint64_t size = isNegative ? 0 - count : count; // also of the lowest value
    std::string text = (isNegative ? "-" : "") + std::to_string(size / nanosecondsInSecond);
    if (const auto fraction = size % nanosecondsInSecond; fraction != 0) {
        const auto digits = std::to_string(fraction);
        text += '.' + std::string(nanosecondDigits - digits.size(), '0') + digits;
        text.erase(text.find_last_not_of('0') + 1);
    }
    return text;
}

void JsonObjectText::add(std::string_view key, std::string_view value) {
    members_ += (members_.empty() ? "" : ", ") + jsonString(key) + ": " + std::string(value);
}

void JsonListText::add(std::string_view value) {
    elements_ += (elements_.empty() ? "" : ", ") + std::string(value);
}

} // namespace cindertop
