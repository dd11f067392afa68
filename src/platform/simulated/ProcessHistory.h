#pragma once

#include "platform/simulated/Scenario.h"
#include "support/WideInteger.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace cindertop::simulated {

/// The processes of a scenario at any moment of it, with their exact CPU times.
class ProcessHistory {
public:
    explicit ProcessHistory(const Scenario& scenario);

    struct Process {
        const ScenarioProcess* record; ///< of the scenario
        std::uint64_t cpuTimeNanoseconds;
        std::uint64_t identityStamp; ///< never 0; the same as long as everything but CPU use is
    };

    /// None when the processes cannot be listed then, or this one is not among them.
    std::optional<Process> find(std::int32_t processIdentifier, std::chrono::nanoseconds elapsed) const;

private:
    struct Entry {
        WideUnsigned cpuTimeAtStart{}; ///< thousandths of nanoseconds
        std::uint64_t identityStamp{};
    };

    /// The time during which one list holds.
    struct Section {
        std::chrono::nanoseconds from{};
        std::shared_ptr<const ScenarioProcessList> list; ///< null: they cannot be listed
        std::vector<Entry> entries;                      ///< one for each process of the list
    };

    Entry continued(const Section& former, const ScenarioProcess& process, std::chrono::nanoseconds at);
    static WideUnsigned cpuTime(const Section& section, std::size_t index, std::chrono::nanoseconds elapsed);

    std::vector<Section> sections_;
    std::uint64_t stamps_ = 0;
};

} // namespace cindertop::simulated
