#include "cli/LocalTime.h"

#include "support/LocalTime.h"

#include <array>
#include <ctime>

namespace cindertop::cli {

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
