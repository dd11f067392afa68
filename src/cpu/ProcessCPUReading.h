#pragma once

#include "support/Instant.h"

#include <cstdint>
#include <optional>
#include <string>

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

} // namespace cindertop
