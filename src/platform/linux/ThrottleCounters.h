#pragma once

#include "platform/linux/AttributeFile.h"
#include "platform/linux/DeviceFolder.h"
#include "platform/linux/MonotonicClock.h"
#include "platform/linux/Roots.h"

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <vector>

namespace cindertop::linux_platform {

/// x86 processors throttle themselves without a cooling device and count for how long. A counter grows when a
/// phase of throttling ends, so a long phase shows late and all at once. Not thread-safe.
class ThrottleCounters {
public:
    struct Reading {
        std::size_t answering; ///< processors
        double share; ///< of the time since the former reading, 0 to 1, the largest over the processors
    };

    ThrottleCounters(const Roots& roots, MonotonicClock clock);

    /// None when no counter answers. The first reading, and one behind a counter that went back, has no
    /// share; within `sameReadingWindow` of a reading the answer stays.
    std::optional<Reading> read();

private:
    struct Counter {
        AttributeFile milliseconds;
        std::optional<std::int64_t> latest;
    };

    void learnIfOutdated();
    std::optional<std::int64_t> latestOf(const std::filesystem::path& file) const;
    std::optional<Reading> readAll(std::chrono::nanoseconds elapsed);

    MonotonicClock clock_;
    DeviceFolder folder_;
    std::vector<Counter> counters_;
    std::optional<std::chrono::nanoseconds> readAt_;
    std::optional<Reading> reading_;
};

} // namespace cindertop::linux_platform
