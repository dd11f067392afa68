#pragma once

#include "support/Instant.h"
#include "support/LocalizedComparison.h"
#include "thermal/ThermalLevel.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>

namespace cindertop {

/// Seconds spent at each level.
struct ThermalLevelDurations {
    double normal;
    double fair;
    double serious;
    double critical;

    /// A negative duration, or none that is a number, becomes 0.
    explicit ThermalLevelDurations(double normal = 0, double fair = 0, double serious = 0,
                                   double critical = 0);

    double totalDuration() const { return normal + fair + serious + critical; }

    /// These, with `seconds` more at a level.
    ThermalLevelDurations adding(double seconds, ThermalLevel level) const;

    bool operator==(const ThermalLevelDurations&) const = default;
};

/// What one calendar day was like, as far as it was recorded.
struct ThermalDailySummary {
    using OffenderCounts = std::map<std::string, std::int64_t>;
    using OffenderIdentifiers = std::map<std::string, std::string>;

    std::string dayIdentifier; ///< "2025-03-05"
    ThermalLevelDurations levelDurations;
    std::int64_t throttlingEpisodeCount; ///< never negative
    std::int64_t criticalEpisodeCount;   ///< never negative
    OffenderCounts topOffenderCounts;    ///< by label: in how many samples it was on top
    std::optional<OffenderIdentifiers> topOffenderBundleIdentifiers; ///< by label: the last one recorded
    Instant updatedAt;

    /// Negative episode counts become 0.
    ThermalDailySummary(std::string dayIdentifier, const ThermalLevelDurations& levelDurations,
                        std::int64_t throttlingEpisodeCount, std::int64_t criticalEpisodeCount,
                        OffenderCounts topOffenderCounts,
                        std::optional<OffenderIdentifiers> topOffenderBundleIdentifiers, Instant updatedAt);

    /// A day of which nothing is known yet.
    static ThermalDailySummary fresh(std::string dayIdentifier, Instant updatedAt);

    /// The label that was on top most often; of several the first as people sort them. Absent without any.
    std::optional<std::string> leadingOffenderLabel(const LocalizedComparison& comparison) const;
    std::optional<std::string> leadingOffenderBundleIdentifier(const LocalizedComparison& comparison) const;

    bool operator==(const ThermalDailySummary&) const = default;
};

} // namespace cindertop
