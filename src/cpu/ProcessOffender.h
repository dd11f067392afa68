#pragma once

#include "cpu/ProcessOffenderCategory.h"
#include "support/Instant.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace cindertop {

/// One process of an offender.
struct ProcessOffenderChild {
    std::int32_t processIdentifier;
    std::int32_t parentProcessIdentifier;
    std::string name;
    double cpuPercent; ///< of the whole machine, never negative
    bool isSystemProcess;
    std::optional<Instant> startedAt;

    /// A share that is negative or not a number becomes 0.
    ProcessOffenderChild(std::int32_t processIdentifier, std::int32_t parentProcessIdentifier,
                         std::string name, double cpuPercent, bool isSystemProcess,
                         std::optional<Instant> startedAt);
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

    /// A negative count, and a share that is negative or not a number, become 0.
    explicit ProcessOffender(Fields fields);
    bool operator==(const ProcessOffender&) const = default;
};

} // namespace cindertop
