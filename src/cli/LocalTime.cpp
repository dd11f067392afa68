#include "cli/LocalTime.h"

#include <array>
#include <chrono>
#include <ctime>

namespace cindertop::cli {

namespace {

std::tm localParts(Instant instant) {
    const auto seconds = std::chrono::floor<std::chrono::seconds>(instant).time_since_epoch();
    const auto time = static_cast<std::time_t>(seconds.count());
    std::tm parts{};
    ::localtime_r(&time, &parts); // fails for years beyond 32 bits only, which no instant reaches
    return parts;
}

} // namespace

std::string localTimeOfDay(Instant instant) {
    const auto parts = localParts(instant);
    std::array<char, 16> buffer{};
    return {buffer.data(), std::strftime(buffer.data(), buffer.size(), "%H:%M:%S", &parts)};
}

std::string localDateAndTime(Instant instant) {
    const auto parts = localParts(instant);
    std::array<char, 32> buffer{};
    return {buffer.data(), std::strftime(buffer.data(), buffer.size(), "%Y-%m-%d %H:%M:%S", &parts)};
}

} // namespace cindertop::cli
