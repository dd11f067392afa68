#include "persistence/ThermalDayCounter.h"

#include "support/Instant.h"

#include <algorithm>
#include <chrono>
#include <limits>
#include <string>
#include <utility>

namespace cindertop {
namespace {

/// The file keeps whole seconds only. Counting does the same, so that the gaps of a day never exceed the day.
std::chrono::sys_seconds secondOf(Instant instant) {
    return std::chrono::floor<std::chrono::seconds>(instant);
}

void increment(std::int64_t& count) {
    count += count < std::numeric_limits<std::int64_t>::max() ? 1 : 0;
}

void incrementWhen(bool isEpisode, std::int64_t& count) {
    if (isEpisode) {
        increment(count);
    }
}

void countOffender(ThermalDailySummary& summary, const ThermalHistorySample& sample) {
    if (!sample.topOffenderLabel) {
        return;
    }
    const std::string& label = *sample.topOffenderLabel;
    increment(summary.topOffenderCounts[label]);
    if (!sample.topOffenderBundleIdentifier) {
        return;
    }
    if (!summary.topOffenderBundleIdentifiers) {
        summary.topOffenderBundleIdentifiers.emplace();
    }
    (*summary.topOffenderBundleIdentifiers)[label] = *sample.topOffenderBundleIdentifier;
}

bool isSustained(const ThermalHistorySample& sample) {
    return sample.contextFlags.isSustainedPressure;
}

} // namespace

ThermalDayCounter::ThermalDayCounter(CalendarDays calendar, Seconds historyDuration,
                                     Seconds maximumAttributionGap)
    : calendar_(std::move(calendar)),
      historyDuration_(historyDuration),
      maximumAttributionGap_(maximumAttributionGap) {}

ThermalDailySummary ThermalDayCounter::counting(const std::optional<ThermalDailySummary>& existing,
                                                std::span<const ThermalHistorySample> stored,
                                                const ThermalHistorySample& sample,
                                                std::optional<AwakeTime> awake) {
    const std::string day = calendar_.identifier(sample.measuredAt);
    ThermalDailySummary summary = existing && existing->dayIdentifier == day
                                      ? *existing
                                      : ThermalDailySummary::fresh(day, sample.measuredAt);
    const auto previous = previousOf(sample, awake, stored);
    if (previous) {
        countTime(summary, *previous);
    }
    countEpisodes(summary, previous, sample);
    countOffender(summary, sample);
    summary.updatedAt = sample.measuredAt;
    latest_ = {.sample = sample, .awake = awake};
    hasSlept_ = false;
    return summary;
}

void ThermalDayCounter::forget() {
    latest_.reset();
    hasSlept_ = false;
    isEpisodeInterrupted_ = false;
}

std::optional<ThermalDayCounter::Previous>
ThermalDayCounter::previousOf(const ThermalHistorySample& sample, std::optional<AwakeTime> awake,
                              std::span<const ThermalHistorySample> stored) const {
    if (latest_) {
        // Where the wall clock was set meanwhile, the previous sample's time is shifted accordingly.
        const bool isTimed = latest_->awake && awake;
        return comparable(
            latest_->sample,
            isTimed ? sample.measuredAt - (*awake - *latest_->awake) : latest_->sample.measuredAt, sample);
    }
    const auto newest =
        std::ranges::find_if(stored.rbegin(), stored.rend(), [&sample](const auto& candidate) {
            return candidate.measuredAt <= sample.measuredAt;
        });
    return newest == stored.rend() ? std::nullopt : comparable(*newest, newest->measuredAt, sample);
}

std::optional<ThermalDayCounter::Previous>
ThermalDayCounter::comparable(const ThermalHistorySample& former, Instant measuredAt,
                              const ThermalHistorySample& sample) const {
    if (secondOf(measuredAt) < instantBefore(sample.measuredAt, historyDuration_)) {
        return std::nullopt;
    }
    const bool isSetBack = former.measuredAt > sample.measuredAt;
    // An episode that continues while the clock is set back over midnight does not begin again.
    const Instant dayOfFormer = isSetBack ? measuredAt : former.measuredAt;
    if (calendar_.identifier(dayOfFormer) != calendar_.identifier(sample.measuredAt)) {
        return std::nullopt; // each day counts for itself
    }
    const bool isLost = isSetBack || hasSlept_;
    const Seconds gap = secondOf(sample.measuredAt) - secondOf(measuredAt);
    return Previous{.sample = former, .gap = isLost ? Seconds(0) : gap};
}

void ThermalDayCounter::countTime(ThermalDailySummary& summary, const Previous& previous) const {
    if (previous.gap > Seconds(0) && previous.gap <= maximumAttributionGap_) {
        summary.levelDurations = summary.levelDurations.adding(previous.gap.count(), previous.sample.level);
    }
}

void ThermalDayCounter::countEpisodes(ThermalDailySummary& summary, const std::optional<Previous>& previous,
                                      const ThermalHistorySample& sample) {
    const bool wasSustained = previous && isSustained(previous->sample);
    const bool wasCritical = previous && previous->sample.level == ThermalLevel::critical;
    isEpisodeInterrupted_ =
        (isEpisodeInterrupted_ || (hasSlept_ && wasSustained)) && sample.level >= ThermalLevel::serious;
    incrementWhen(isSustained(sample) && !wasSustained && !isEpisodeInterrupted_,
                  summary.throttlingEpisodeCount);
    incrementWhen(sample.level == ThermalLevel::critical && !wasCritical, summary.criticalEpisodeCount);
    isEpisodeInterrupted_ = isEpisodeInterrupted_ && !isSustained(sample);
}

} // namespace cindertop
