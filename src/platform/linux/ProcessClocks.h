#pragma once

#include "support/Instant.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>

namespace cindertop::linux_platform {

/// The kernel's clocks as the process table needs them. Tests script them. Called from one thread at a time.
class ProcessClocks {
public:
    virtual ~ProcessClocks() = default;
    /// CPU time of all threads of a process, ended ones too; none when no such process is left. A zombie's
    /// stands.
    virtual std::optional<std::chrono::nanoseconds> cpuTime(std::int32_t processIdentifier) = 0;
    /// Time since the machine started, sleep included.
    virtual std::chrono::nanoseconds sinceBoot() = 0;
    /// Wall-clock time.
    virtual Instant now() = 0;
};

std::unique_ptr<ProcessClocks> kernelClocks();

} // namespace cindertop::linux_platform
