#include "platform/linux/SensorDevice.h"

#include "platform/linux/ReadingStamp.h"

#include <algorithm>
#include <cstdint>

namespace cindertop::linux_platform {

namespace {

/// The kernel's timer may come late, and falling asleep takes a while.
constexpr std::chrono::seconds sleepMargin{1};

constexpr std::int64_t longestDelay = 3'600'000; ///< milliseconds; nobody waits longer for a sleep

} // namespace

SensorDevice::SensorDevice(const std::filesystem::path& power)
    : power_(power),
      status_(power / "runtime_status"),
      control_(power / "control"),
      delay_(power / "autosuspend_delay_ms") {}

bool SensorDevice::isAwake(std::chrono::nanoseconds now) {
    ask(now);
    return isAwake_;
}

bool SensorDevice::isDue(std::chrono::nanoseconds now) {
    ask(now);
    const auto since = readAt_ ? now - *readAt_ : std::chrono::nanoseconds::max();
    return since >= rest_ || since < sameReadingWindow; // the window: its other sensors, in the same tick
}

/// "unsupported" is a device without power management at run time, as most processor chips are.
void SensorDevice::ask(std::chrono::nanoseconds now) {
    if (askedAt_ && now - *askedAt_ < sameReadingWindow) {
        return;
    }
    askedAt_ = now;
    const auto status = status_.word();
    const bool isActive = status && *status == "active";
    isAwake_ = isActive || (status ? *status == "unsupported" : status.error() == FileError::missing);
    rest_ = isActive ? timeToFallAsleep() : std::chrono::nanoseconds(0);
}

/// A negative delay keeps the device awake. One without a delay sleeps whenever nobody uses it: then it is
/// somebody else who keeps it awake.
std::chrono::nanoseconds SensorDevice::timeToFallAsleep() {
    const auto delay = control_.word() == "auto" ? delay_.integer() : std::nullopt;
    return delay && *delay > 0 ? std::chrono::milliseconds(std::min(*delay, longestDelay)) + sleepMargin
                               : std::chrono::nanoseconds(0);
}

} // namespace cindertop::linux_platform
