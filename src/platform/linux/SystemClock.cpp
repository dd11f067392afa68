#include "platform/linux/SystemClock.h"

#include <ctime>

namespace cindertop::linux_platform {

namespace {

std::chrono::nanoseconds timeOf(clockid_t clock) {
    timespec time{};
    ::clock_gettime(clock, &time); // cannot fail for the clocks below
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

} // namespace

Uptime SystemClock::uptime() const {
    const auto awake = timeOf(CLOCK_MONOTONIC);
    return {.awake = AwakeTime(awake), .asleep = timeOf(CLOCK_BOOTTIME) - awake};
}

} // namespace cindertop::linux_platform
