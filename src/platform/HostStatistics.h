#pragma once

#include <cstdint>
#include <optional>

namespace cindertop {

/// Clock ticks since the start of the machine, all processors together.
struct HostCpuLoad {
    std::uint64_t user;
    std::uint64_t system;
    std::uint64_t idle;
    std::uint64_t nice;

    bool operator==(const HostCpuLoad&) const = default;
};

/// How the machine as a whole spends its CPU time.
class HostStatistics {
public:
    virtual ~HostStatistics() = default;
    /// None when the system refuses.
    virtual std::optional<HostCpuLoad> cpuLoad() const = 0;
};

} // namespace cindertop
