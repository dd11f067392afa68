#pragma once

#include "support/Instant.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace cindertop::simulated {

struct ScenarioProcess {
    std::int32_t processIdentifier{};
    std::int32_t parent{1};
    std::uint32_t user{501};
    std::string longName;  ///< at most 32 bytes
    std::string shortName; ///< at most 16 bytes
    std::optional<std::string> path;
    bool isSystemProcess{};
    std::uint32_t millicores{};         ///< CPU use in thousandths of one processor
    std::uint64_t cpuTimeNanoseconds{}; ///< at the moment when the process is first listed
    std::optional<Instant> startedAt;   ///< to the microsecond
};

/// Processes in the order in which the system lists them.
class ScenarioProcessList {
public:
    ScenarioProcessList() = default;
    explicit ScenarioProcessList(std::vector<ScenarioProcess> processes);

    const std::vector<ScenarioProcess>& processes() const { return processes_; }

    /// The index of the process; none when it is not listed.
    std::optional<std::size_t> find(std::int32_t processIdentifier) const;
    /// The index of the first process whose identifier an earlier one has. A list of a scenario has none.
    std::optional<std::size_t> firstRepetition() const;

private:
    std::vector<ScenarioProcess> processes_;
    std::vector<std::uint32_t> byIdentifier_; ///< indices, ascending by identifier, then by themselves
};

} // namespace cindertop::simulated
