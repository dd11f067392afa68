#pragma once

#include "platform/linux/SystemClock.h"

#include <algorithm>
#include <chrono>
#include <optional>

namespace cindertop::linux_platform {

/// Readings younger than this are one reading: who asks for the state, the pressure and the sensors in one
/// tick gets the same answer, and no file is read twice for it.
inline constexpr std::chrono::milliseconds sameReadingWindow{50};

/// When something was read. The age counts from the end of the read, and a reading is good for as long as it
/// took: some drivers take a second, and must not be asked again in the same tick.
class ReadingStamp {
public:
    /// Calls `read` and remembers when; gives its answer.
    template <typename Read>
    auto around(const MonotonicClock& clock, Read read) {
        const auto begun = clock();
        auto answer = read();
        end_ = clock();
        duration_ = *end_ - begun;
        return answer;
    }

    bool isRecent(std::chrono::nanoseconds now) const {
        return end_ && now - *end_ < std::max<std::chrono::nanoseconds>(sameReadingWindow, duration_);
    }

    /// Whether the read ended at this moment or later.
    bool isSince(std::chrono::nanoseconds moment) const { return end_ && *end_ >= moment; }

    bool isSet() const { return end_.has_value(); }

private:
    std::optional<std::chrono::nanoseconds> end_;
    std::chrono::nanoseconds duration_{0};
};

} // namespace cindertop::linux_platform
