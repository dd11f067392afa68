#pragma once

#include "cpu/GraphicsMeter.h"
#include "cpu/ProcessCPUReading.h"
#include "cpu/ProcessOffender.h"
#include "cpu/ProcessOffenderConfiguration.h"
#include "support/Instant.h"
#include "support/LocalizedComparison.h"
#include "support/Wording.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

namespace cindertop {

/// All of an earlier reading that the next census is compared with.
struct PreviousReading {
    std::uint64_t cumulativeCPUTimeNanoseconds{};
    std::optional<Instant> startedAt;
    Instant measuredAt;
};

using PreviousReadingsByPID = std::unordered_map<std::int32_t, PreviousReading>;
/// Oldest point first.
using HistoryByOffenderID = std::unordered_map<std::string, std::vector<ProcessOffenderHistoryPoint>>;

/// A census to compare the next one with. Of readings with one identifier the last counts.
PreviousReadingsByPID readingsByPID(std::span<const ProcessCPUReading> readings);

/// Turns two censuses into a ranked list of applications and kinds of system work. Single use. Pure: the same
/// inputs give the same result. The referenced inputs must outlive the call.
struct ProcessOffenderAggregator {
    struct Result {
        std::vector<ProcessOffender> visibleOffenders;
        HistoryByOffenderID historyByOffenderID; ///< of every group that used CPU time, shown or not
        bool isIndexingOrSetupLikely{};
    };

    const ProcessOffenderConfiguration& configuration;
    const PreviousReadingsByPID& previousReadingsByPID;
    std::span<const ProcessCPUReading> currentReadings; ///< in census order, which decides between equals
    HistoryByOffenderID existingHistoryByOffenderID;    ///< taken over into the result
    Instant now;                                        ///< when the current readings were taken
    const LocalizedComparison& comparison;
    OperatingSystem system; ///< decides what names of processes mean, and the names of groups
    /// By how much the wall clock has advanced beyond awake time since the previous readings: it was set, or
    /// the machine slept.
    std::chrono::nanoseconds clockStep{};
    /// Since the previous readings. Those of one process stand together.
    std::span<const GraphicsShare> graphicsShares{};

    Result aggregate() &&;
};

} // namespace cindertop
