#pragma once

#include "cpu/ProcessCPUReading.h"
#include "support/Instant.h"

#include <vector>

namespace cindertop {

/// Takes a census of the live processes. Called from the engine thread.
class ProcessCPUReadingProviding {
public:
    virtual ~ProcessCPUReadingProviding() = default;
    /// One reading for each process that can be read, in the system's order, all measured at the given
    /// instant. Empty when the processes cannot be listed.
    virtual std::vector<ProcessCPUReading> readings(Instant at) = 0;
};

} // namespace cindertop
