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
        std::uint64_t life;          ///< the same from when it is first listed until it is over
        std::vector<std::uint64_t> graphicsNanoseconds; ///< by engine, as in the record
    };

    /// None when the processes cannot be listed then, or this one is not among them.
    std::optional<Process> find(std::int32_t processIdentifier, std::chrono::nanoseconds elapsed) const;

private:
    struct Entry {
        WideUnsigned cpuTimeAtStart{}; ///< thousandths of nanoseconds
        std::uint64_t identityStamp{};
        std::uint64_t life{};
        std::vector<WideUnsigned> graphicsAtStart{}; ///< thousandths of nanoseconds of each engine
    };

    /// The time during which one list holds.
    struct Section {
        std::chrono::nanoseconds from{};
        std::shared_ptr<const ScenarioProcessList> list; ///< null: they cannot be listed
        std::vector<Entry> entries;                      ///< one for each process of the list
    };

    Entry continued(const Section& former, const ScenarioProcess& process, std::chrono::nanoseconds at);
    static WideUnsigned cpuTime(const Section& section, std::size_t index, std::chrono::nanoseconds elapsed);

    static WideUnsigned graphicsTime(const Section& section, std::size_t index, std::size_t engine,
                                     std::chrono::nanoseconds elapsed);
    /// What a process that goes on had used of the engines that it uses now; 0 of a new one.
    static std::vector<WideUnsigned> continuedGraphics(const Section& former, std::size_t index,
                                                       const ScenarioProcess& process,
                                                       std::chrono::nanoseconds at);

    std::vector<Section> sections_;
    std::uint64_t stamps_ = 0;
};

} // namespace cindertop::simulated
