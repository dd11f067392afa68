#pragma once

#include "platform/linux/AttributeFile.h"
#include "platform/linux/FileReading.h"
#include "platform/linux/SystemClock.h"

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>

namespace cindertop::linux_platform {

/// Tells when what is known about the devices of a class folder has to be read again: a device came, went or
/// was replaced by another of its name, or `longestTrust` has passed, since attributes come and go without a
/// trace in the folder (processors that go offline, thresholds that firmware moves). Not thread-safe.
class DeviceFolder {
public:
    static constexpr std::chrono::seconds longestTrust{30};

    /// `folder` below the sysfs root, for example "class/thermal".
    DeviceFolder(const Roots& roots, const std::filesystem::path& folder, MonotonicClock clock);

    const std::filesystem::path& path() const { return folder_; }

    /// True at the first call, and whenever the knowledge of the last "true" is outdated.
    bool isOutdated();

private:
    bool hasOtherDevices();

    std::filesystem::path folder_;
    AttributeFile eventCounter_;
    MonotonicClock clock_;
    std::optional<std::chrono::nanoseconds> learntAt_;
    std::optional<std::int64_t> eventCount_;
    std::uint64_t fingerprint_ = 0;
};

} // namespace cindertop::linux_platform
