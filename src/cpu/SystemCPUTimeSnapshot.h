#pragma once

#include "support/Instant.h"
#include "support/WideInteger.h"

#include <cstdint>

namespace cindertop {

/// One reading of the machine's CPU tick counters, all processors together.
struct SystemCPUTimeSnapshot {
    std::uint64_t user{};
    std::uint64_t system{};
    std::uint64_t idle{};
    std::uint64_t nice{}; ///< user mode at lowered priority: busy time
    Instant measuredAt{};

    constexpr WideUnsigned activeTicks() const { return WideUnsigned{user} + system + nice; }

    constexpr WideUnsigned totalTicks() const { return activeTicks() + idle; }

    bool operator==(const SystemCPUTimeSnapshot&) const = default;
};

} // namespace cindertop
