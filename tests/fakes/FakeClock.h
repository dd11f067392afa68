#pragma once

#include "platform/Clock.h"

namespace cindertop::fakes {

/// Stands still until it is moved.
class FakeClock final : public Clock {
public:
    Instant time{std::chrono::seconds(1'700'000'000)};

    Instant now() const override { return time; }

    void advance(std::chrono::nanoseconds duration) { time += duration; }
};

} // namespace cindertop::fakes
