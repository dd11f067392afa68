#pragma once

#include "platform/linux/AttributeFile.h"
#include "platform/linux/DeviceFolder.h"
#include "platform/linux/FileReading.h"
#include "platform/linux/ReadingStamp.h"
#include "platform/linux/SystemClock.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <vector>

namespace cindertop::linux_platform {

/// x86 processors throttle themselves without a cooling device. The kernel counts each throttling when it
/// begins and adds its time when it ends, so a long one shows late and all at once. A short spike of the
/// temperature is counted and its time never added. Not thread-safe.
class ThrottleCounters {
public:
    struct Reading {
        std::size_t answering; ///< processors
        double loss;           ///< of the processor's speed, 0 to 0.5, the largest over the processors
    };

    ThrottleCounters(const Roots& roots, MonotonicClock clock);

    /// None when no counter answers. `isProcessorHot`: a processor's sensor is within 10 °C of its limit;
    /// only then a throttling that has begun is taken to last. The first reading reports no loss; a recent
    /// reading is returned again.
    std::optional<Reading> read(bool isProcessorHot);

private:
    struct Counts {
        std::optional<std::int64_t> begun; ///< throttlings
        std::optional<std::int64_t> milliseconds;

        bool answer() const { return begun || milliseconds; }
    };

    struct Counter {
        std::filesystem::path folder;
        AttributeFile begun;
        AttributeFile milliseconds;
        Counts latest;
        bool isOpen = false; ///< a throttling has begun whose time was not added yet

        double lossSince(const Counts& former, std::chrono::nanoseconds elapsed, bool isProcessorHot);
    };

    void learnIfOutdated();
    std::optional<Counter> learn(const std::filesystem::path& processor) const;
    std::optional<Reading> readAll(std::chrono::nanoseconds elapsed, bool isProcessorHot);

    MonotonicClock clock_;
    DeviceFolder folder_;
    std::vector<Counter> counters_;
    std::optional<std::chrono::nanoseconds> readAt_; ///< the start of the latest read
    ReadingStamp stamp_;
    std::optional<Reading> reading_;
};

} // namespace cindertop::linux_platform
