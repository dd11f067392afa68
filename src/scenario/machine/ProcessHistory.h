#pragma once

#include "platform/HostStatistics.h"
#include "scenario/format/Scenario.h"
#include "support/WideInteger.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace cindertop::simulated {

/// The tick counters of a scenario's machine at any moment of it, from sums that are divided only when they
/// are read.
class LoadHistory {
public:
    explicit LoadHistory(const Scenario& scenario);

    /// `frameIndex` is that of the frame in force at `elapsed`.
    HostCpuLoad ticksAt(std::size_t frameIndex, std::chrono::nanoseconds elapsed) const;

private:
    /// Thousandths of the machine × nanoseconds.
    struct Sums {
        WideUnsigned user{};
        WideUnsigned system{};
        WideUnsigned idle{};
        WideUnsigned nice{};

        void add(const std::optional<ScenarioLoad>& load, std::chrono::nanoseconds time);
    };

    const Scenario* scenario_;
    std::vector<Sums> atFrameStart_;
};

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
