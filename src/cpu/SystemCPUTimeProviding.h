#pragma once

#include "cpu/SystemCPUTimeSnapshot.h"
#include "support/Instant.h"

#include <optional>

namespace cindertop {

/// Reads the machine's CPU tick counters. Called from the engine thread.
class SystemCPUTimeProviding {
public:
    virtual ~SystemCPUTimeProviding() = default;
    /// The counters now, labelled with the caller's instant; none when the system refuses.
    virtual std::optional<SystemCPUTimeSnapshot> snapshot(Instant at) const = 0;
};

} // namespace cindertop
