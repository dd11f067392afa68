#pragma once

#include "platform/linux/AttributeFile.h"

#include <chrono>
#include <filesystem>
#include <optional>

namespace cindertop::linux_platform {

/// The hardware of a chip, shared by the sensors on it. A read wakes a device that sleeps, and one that the
/// kernel sends to sleep after a time without use starts that time anew with each read. Not thread-safe.
class SensorDevice {
public:
    /// `power` is the device's folder of that name.
    explicit SensorDevice(const std::filesystem::path& power);

    const std::filesystem::path& power() const { return power_; }

    bool isAwake(std::chrono::nanoseconds now);

    /// Whether a read now leaves the device time to fall asleep since the reads before. All sensors of the
    /// device are due together.
    bool isDue(std::chrono::nanoseconds now);

    void wasRead(std::chrono::nanoseconds now) { readAt_ = now; }

private:
    void ask(std::chrono::nanoseconds now);
    std::chrono::nanoseconds timeToFallAsleep();

    std::filesystem::path power_;
    AttributeFile status_;
    AttributeFile control_;
    AttributeFile delay_;
    std::optional<std::chrono::nanoseconds> askedAt_;
    bool isAwake_ = false;
    std::chrono::nanoseconds rest_{0}; ///< between two reads; 0: it does not fall asleep by itself
    std::optional<std::chrono::nanoseconds> readAt_;
};

} // namespace cindertop::linux_platform
