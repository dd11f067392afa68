#pragma once

#include "support/Instant.h"
#include "support/LocalizedComparison.h"
#include "thermal/ThermalLevel.h"

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cindertop {

/// The name of an offender, without the path or the prefix before a colon that it may come with: trimmed, the
/// part behind the last "/", "\" or ":", at most 48 characters. Absent when only blanks are given; a text
/// that ends with a separator gives an empty label.
std::optional<std::string> sanitizedLabel(std::string_view label);

/// Trimmed, at most 128 characters; absent when it is empty or has any other character than ASCII letters,
/// digits,
/// ".", "_" and "-".
std::optional<std::string> sanitizedBundleIdentifier(std::string_view identifier);

/// The situation in which a sample was taken.
struct ThermalHistoryContextFlags {
    bool hasExternalDisplay = false;
    bool isProbableClamshell = false;
    bool isExternalPowerConnected = false;
    bool isLowPowerModeEnabled = false;
    bool isSustainedPressure = false;
    bool isIndexingOrSetupLikely = false;

    bool operator==(const ThermalHistoryContextFlags&) const = default;
};

/// One recorded moment.
struct ThermalHistorySample {
    Instant measuredAt;
    ThermalLevel level;
    std::int64_t score;                     ///< 0 to 100
    std::optional<double> globalCPUPercent; ///< 0 to 100 of the whole machine
    std::optional<double> temperatureCelsius;
    std::optional<std::string> topOffenderLabel;            ///< at most 48 characters, no path
    std::optional<std::string> topOffenderBundleIdentifier; ///< at most 128 letters, digits, ".", "_", "-"
    ThermalHistoryContextFlags contextFlags;

    /// Numbers are clamped into their ranges (NaN becomes 0), both texts go through their sanitiser, which
    /// may make them absent. The temperature stays as it is.
    ThermalHistorySample(Instant measuredAt, ThermalLevel level, std::int64_t score,
                         std::optional<double> globalCPUPercent, std::optional<double> temperatureCelsius,
                         const std::optional<std::string>& topOffenderLabel,
                         const std::optional<std::string>& topOffenderBundleIdentifier,
                         const ThermalHistoryContextFlags& contextFlags);

    bool operator==(const ThermalHistorySample&) const = default;
};

/// Whether anything reported the machine's heat at that moment. Each source that answers gives points or a
/// temperature, so the file needs no mark of its own.
inline bool isHeatKnown(const ThermalHistorySample& sample) {
    return sample.score > 0 || sample.temperatureCelsius.has_value();
}

/// A list of samples whose copies share them: a copy costs the same however long the list is, and a copy
/// never changes with the list it was made of. Lists that share are changed by one thread at a time, while
/// any thread reads copies of its own.
class SharedHistorySamples {
public:
    SharedHistorySamples() = default;
    SharedHistorySamples(std::vector<ThermalHistorySample> samples); // NOLINT(google-explicit-constructor)
    SharedHistorySamples(std::initializer_list<ThermalHistorySample> samples);

    /// Moves no sample, but now and then all of them, and those of a list that a copy has outgrown.
    void append(ThermalHistorySample sample);
    void removeFirst(std::size_t count);

    /// Each sample is as late as the one before it, or later.
    bool areInOrder() const { return areInOrder_; }

    const ThermalHistorySample* begin() const { return first_; }

    const ThermalHistorySample* end() const { return first_ + count_; }

    std::size_t size() const { return count_; }

    bool empty() const { return count_ == 0; }

    const ThermalHistorySample& operator[](std::size_t index) const { return first_[index]; }

    const ThermalHistorySample& front() const { return first_[0]; }

    const ThermalHistorySample& back() const { return first_[count_ - 1]; }

    bool operator==(const SharedHistorySamples& other) const;

private:
    bool hasRoomBehind() const;

    /// Never has more samples than it had room for when it was made, so that none of them moves. It may hold
    /// more than this list: in front what was removed, behind what a copy has appended.
    std::shared_ptr<std::vector<ThermalHistorySample>> storage_;
    const ThermalHistorySample* first_ = nullptr;
    std::size_t count_ = 0;
    bool areInOrder_ = true;
};

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

/// What the history holds at a moment.
struct ThermalMonitoringSnapshot {
    SharedHistorySamples samples; ///< oldest first, all within the history's window
    ThermalDailySummary todaySummary;
    Instant measuredAt;

    /// Before the store has answered: no samples, the day "unknown", everything at the Unix epoch.
    static const ThermalMonitoringSnapshot& empty();

    bool operator==(const ThermalMonitoringSnapshot&) const = default;
};

/// Whether the day's time at its levels was measured. On a machine that reports no heat all of it counts as
/// normal, which the samples reveal.
bool areLevelsMeasured(const ThermalMonitoringSnapshot& snapshot);

} // namespace cindertop
