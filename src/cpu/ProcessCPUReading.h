#pragma once

#include "support/Instant.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace cindertop {

/// One live process as a census found it. Texts are valid UTF-8.
struct ProcessCPUReading {
    std::int32_t processIdentifier{};
    std::int32_t parentProcessIdentifier{};
    std::uint32_t userIdentifier{}; ///< real user identifier of the owner
    std::string name{};             ///< never empty
    std::optional<std::string> executablePath{};
    std::optional<std::string> appBundlePath{}; ///< of the outermost application around the executable
    std::optional<std::string> appBundleIdentifier{};
    std::optional<std::string> appDisplayName{};
    bool isSystemProcess{};                       ///< marked so by the system, or owned by user 0
    std::uint64_t cumulativeCPUTimeNanoseconds{}; ///< user plus system time since the process started
    std::optional<Instant> startedAt{};
    Instant measuredAt{}; ///< when the census was taken, one instant for all of its readings

    bool operator==(const ProcessCPUReading&) const = default;
};

/// Takes a census of the live processes. Called from the engine thread.
class ProcessCPUReadingProviding {
public:
    virtual ~ProcessCPUReadingProviding() = default;
    /// One reading for each process that can be read, in the system's order, all measured at the given
    /// instant. Empty when the processes cannot be listed.
    virtual std::vector<ProcessCPUReading> readings(Instant at) = 0;
};

} // namespace cindertop
