#pragma once

#include "support/Enumeration.h"
#include "support/Instant.h"
#include "support/Wording.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace cindertop {

/// The value itself, or 0 where it is negative or not a number.
constexpr double nonNegative(double value) {
    return value > 0 ? value : 0;
}

/// What kind of work a process does: it decides grouping, advice and whether quitting may be offered.
enum class ProcessOffenderCategory {
    userApplication,
    browserWorkload,
    developerWorkload,
    indexingOrSetup,
    backgroundSystem,
    system,
    unknown,
};

template <>
struct EnumerationTable<ProcessOffenderCategory> {
    using enum ProcessOffenderCategory;
    static constexpr std::array cases{
        EnumerationCase{userApplication, "userApplication"},
        EnumerationCase{browserWorkload, "browserWorkload"},
        EnumerationCase{developerWorkload, "developerWorkload"},
        EnumerationCase{indexingOrSetup, "indexingOrSetup"},
        EnumerationCase{backgroundSystem, "backgroundSystem"},
        EnumerationCase{system, "system"},
        EnumerationCase{unknown, "unknown"},
    };
};

/// The wording for people, for example "Developer workload".
constexpr Wording label(ProcessOffenderCategory category) {
    switch (category) {
    case ProcessOffenderCategory::userApplication:
        return {"Top CPU offender", "Application"}; // also one that does next to nothing
    case ProcessOffenderCategory::browserWorkload:
        return Wording::same("Likely browser tab/app workload");
    case ProcessOffenderCategory::developerWorkload:
        return Wording::same("Developer workload");
    case ProcessOffenderCategory::indexingOrSetup:
        return Wording::same("Background indexing/setup");
    case ProcessOffenderCategory::backgroundSystem:
        return Wording::same("Background system process");
    case ProcessOffenderCategory::system:
        return Wording::same("System process");
    case ProcessOffenderCategory::unknown:
        break;
    }
    return Wording::same("Process load");
}

/// Whether the work belongs to the system, so that nobody is offered to quit it.
constexpr bool isSystemOwned(ProcessOffenderCategory category) {
    return category == ProcessOffenderCategory::indexingOrSetup ||
           category == ProcessOffenderCategory::backgroundSystem ||
           category == ProcessOffenderCategory::system;
}

/// One process of an offender.
struct ProcessOffenderChild {
    std::int32_t processIdentifier;
    std::int32_t parentProcessIdentifier;
    std::string name;
    double cpuPercent; ///< of the whole machine, never negative
    bool isSystemProcess;
    std::optional<Instant> startedAt;
    std::optional<double> graphicsPercent; ///< of the busiest graphics engine, 0 to 100; absent: not known

    /// A share that is negative or not a number becomes 0.
    ProcessOffenderChild(std::int32_t processIdentifier, std::int32_t parentProcessIdentifier,
                         std::string name, double cpuPercent, bool isSystemProcess,
                         std::optional<Instant> startedAt,
                         std::optional<double> graphicsPercent = std::nullopt);
    bool operator==(const ProcessOffenderChild&) const = default;
};

/// An offender's share at one census.
struct ProcessOffenderHistoryPoint {
    Instant measuredAt;
    double cpuPercent; ///< of the whole machine, never negative

    /// A share that is negative or not a number becomes 0.
    ProcessOffenderHistoryPoint(Instant measuredAt, double cpuPercent);

    Instant id() const { return measuredAt; }

    bool operator==(const ProcessOffenderHistoryPoint&) const = default;
};

/// An application, or a named group of system work, that uses CPU time. Lists tell offenders apart by `id`.
struct ProcessOffender {
    /// What an offender is built from: `ProcessOffender({.id = "bundle:org.example", .cpuPercent = 12.5})`.
    struct Fields {
        std::string id{};
        std::string displayName{};
        std::optional<std::string> bundleIdentifier{};
        std::optional<std::string> appBundlePath{};
        std::optional<std::int32_t> representativeProcessIdentifier{};
        std::int64_t processCount{};
        double cpuPercent{};
        ProcessOffenderCategory category{ProcessOffenderCategory::unknown};
        bool canTerminateApplication{};
        std::vector<ProcessOffenderChild> children{};
        std::vector<ProcessOffenderHistoryPoint> history{};
        std::optional<Instant> startedAt{};
        std::optional<double> graphicsPercent{};
    };

    std::string id; ///< stable from census to census, for example "bundle:org.mozilla.firefox"
    std::string displayName;
    std::optional<std::string> bundleIdentifier;
    std::optional<std::string> appBundlePath;
    std::optional<std::int32_t>
        representativeProcessIdentifier; ///< the busiest; a quit command means this one
    std::int64_t processCount;           ///< at least 0
    double cpuPercent;                   ///< of the whole machine, all processes together, never negative
    ProcessOffenderCategory category;
    bool canTerminateApplication;                     ///< whether quitting may be offered
    std::vector<ProcessOffenderChild> children;       ///< the busiest first; may be fewer than `processCount`
    std::vector<ProcessOffenderHistoryPoint> history; ///< oldest first
    std::optional<Instant> startedAt;                 ///< when the first of its processes started
    /// Of the graphics engine that it keeps busiest, all processes together, 0 to 100. Absent where none of
    /// them tells what it draws.
    std::optional<double> graphicsPercent;

    /// A negative count, and a share that is negative or not a number, become 0.
    explicit ProcessOffender(Fields fields);
    bool operator==(const ProcessOffender&) const = default;
};

enum class ProcessOffenderSnapshotState {
    unavailable, ///< the processes could not be listed
    collecting,  ///< one census taken, nothing to compare it with yet
    ready,
};

template <>
struct EnumerationTable<ProcessOffenderSnapshotState> {
    using enum ProcessOffenderSnapshotState;
    static constexpr std::array cases{
        EnumerationCase{unavailable, "unavailable"},
        EnumerationCase{collecting, "collecting"},
        EnumerationCase{ready, "ready"},
    };
};

/// Who used the CPU between the last two censuses.
struct ProcessOffenderSnapshot {
    ProcessOffenderSnapshotState state{ProcessOffenderSnapshotState::unavailable};
    std::vector<ProcessOffender> offenders; ///< the visible ones, in display order
    bool isIndexingOrSetupLikely{};         ///< indexing or setup runs hard enough to matter
    Instant measuredAt{unixEpoch};

    /// Nothing measured yet.
    static const ProcessOffenderSnapshot& empty();
    bool operator==(const ProcessOffenderSnapshot&) const = default;
};

} // namespace cindertop
