#include "support/LocalTime.h"

#include <chrono>

namespace cindertop {

std::tm localTime(Instant instant) {
    const auto seconds = std::chrono::floor<std::chrono::seconds>(instant).time_since_epoch();
    const auto time = static_cast<std::time_t>(seconds.count());
    ::tzset(); // looks whether the system's zone is another one than before, which localtime_r does not
    std::tm parts{};
    ::localtime_r(&time, &parts); // fails for years beyond 32 bits only, which no instant reaches
    return parts;
}

} // namespace cindertop
