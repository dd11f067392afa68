#include "persistence/ThermalHistoryStore.h"

#include "support/AtomicFile.h"
#include "support/PropertyListText.h"
#include "support/UserFolders.h"

#include <algorithm>
#include <chrono>
#include <limits>
#include <tuple>
#include <utility>

namespace cindertop {
namespace {

Seconds atLeast(Seconds least, Seconds value) {
    return value > least ? value : least; // NaN is above nothing
}

/// The moment that long before; the distant past when no instant is so early.
Instant earlier(Instant instant, Seconds duration) {
    const auto available = std::chrono::duration_cast<Seconds>(instant.time_since_epoch()) -
                           std::chrono::duration_cast<Seconds>(distantPast.time_since_epoch());
    // Near the end of the range the double is up to a microsecond off.
    if (duration >= available - Seconds(1)) {
        return distantPast;
    }
    return instant - std::chrono::duration_cast<Instant::duration>(duration);
}

/// Between the seconds in which two moments lie, because the file keeps no more of them: so the gaps of a day
/// add up to no more than the day.
Seconds gapBetween(const ThermalHistorySample& earlierSample, const ThermalHistorySample& laterSample) {
    return std::chrono::floor<std::chrono::seconds>(laterSample.measuredAt) -
           std::chrono::floor<std::chrono::seconds>(earlierSample.measuredAt);
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

} // namespace

std::filesystem::path ThermalHistoryStore::defaultFile() {
    return UserFolders::ofUser().programData() / "thermal-history.plist";
}

ThermalHistoryStore::ThermalHistoryStore(std::optional<std::filesystem::path> file, Seconds historyDuration,
                                         Seconds maximumAttributionGap, CalendarDays calendar,
                                         FileSystem& files)
    : file_(file ? *std::move(file) : defaultFile()),
      historyDuration_(atLeast(Seconds(60), historyDuration)),
      maximumAttributionGap_(atLeast(Seconds(10), maximumAttributionGap)),
      calendar_(std::move(calendar)),
      files_(files) {}

ThermalMonitoringSnapshot ThermalHistoryStore::record(const ThermalHistorySample& sample) {
    const std::scoped_lock lock(mutex_);
    const Instant now = sample.measuredAt;
    ThermalHistoryEnvelope envelope = load();
    normalize(envelope, now);
    const ThermalHistorySample* const previous =
        envelope.samples.empty() ? nullptr : &envelope.samples.back();
    envelope.todaySummary = updatedSummary(envelope.todaySummary, previous, sample);
    envelope.samples.push_back(sample);
    prune(envelope.samples, now);
    save(envelope);
    return makeSnapshot(std::move(envelope), now);
}

ThermalMonitoringSnapshot ThermalHistoryStore::snapshot(Instant now) {
    const std::scoped_lock lock(mutex_);
    ThermalHistoryEnvelope envelope = load();
    normalize(envelope, now);
    return makeSnapshot(std::move(envelope), now);
}

void ThermalHistoryStore::clear() {
    const std::scoped_lock lock(mutex_);
    std::ignore = removeFile(files_, file_);
}

ThermalHistoryEnvelope ThermalHistoryStore::load() {
    auto text = wholeFile(files_, file_, propertyListSizeLimit);
    if (!text) {
        return {};
    }
    auto envelope = decodeHistory(*std::move(text));
    return envelope ? *std::move(envelope) : ThermalHistoryEnvelope{};
}

void ThermalHistoryStore::save(const ThermalHistoryEnvelope& envelope) {
    if (!makeFolders(files_, file_.parent_path())) {
        return;
    }
    if (const auto text = encodeHistory(envelope)) {
        // The next sample comes within seconds: a power cut may cost a few, and the disk may sleep.
        std::ignore = replaceFile(files_, file_, *text, Durability::relaxed);
    }
}

void ThermalHistoryStore::normalize(ThermalHistoryEnvelope& envelope, Instant now) const {
    if (!envelope.todaySummary || envelope.todaySummary->dayIdentifier != calendar_.identifier(now)) {
        envelope.todaySummary = freshSummary(now);
    }
    prune(envelope.samples, now);
    std::ranges::stable_sort(envelope.samples, {}, &ThermalHistorySample::measuredAt);
}

void ThermalHistoryStore::prune(std::vector<ThermalHistorySample>& samples, Instant now) const {
    const Instant oldest = earlier(now, historyDuration_);
    std::erase_if(samples, [&](const ThermalHistorySample& sample) { return sample.measuredAt < oldest; });
}

ThermalDailySummary ThermalHistoryStore::updatedSummary(const std::optional<ThermalDailySummary>& existing,
                                                        const ThermalHistorySample* previous,
                                                        const ThermalHistorySample& sample) const {
    const std::string day = calendar_.identifier(sample.measuredAt);
    ThermalDailySummary summary =
        existing && existing->dayIdentifier == day ? *existing : freshSummary(sample.measuredAt);
    if (previous != nullptr && calendar_.identifier(previous->measuredAt) == day) {
        countAgainst(summary, *previous, sample);
    } else {
        incrementWhen(sample.contextFlags.isSustainedPressure, summary.throttlingEpisodeCount);
        incrementWhen(sample.level == ThermalLevel::critical, summary.criticalEpisodeCount);
    }
    countOffender(summary, sample);
    summary.updatedAt = sample.measuredAt;
    return summary;
}

void ThermalHistoryStore::countAgainst(ThermalDailySummary& summary, const ThermalHistorySample& previous,
                                       const ThermalHistorySample& sample) const {
    const Seconds gap = gapBetween(previous, sample);
    if (gap > Seconds(0) && gap <= maximumAttributionGap_) {
        summary.levelDurations = summary.levelDurations.adding(gap.count(), previous.level);
    }
    incrementWhen(sample.contextFlags.isSustainedPressure && !previous.contextFlags.isSustainedPressure,
                  summary.throttlingEpisodeCount);
    incrementWhen(sample.level == ThermalLevel::critical && previous.level != ThermalLevel::critical,
                  summary.criticalEpisodeCount);
}

ThermalMonitoringSnapshot ThermalHistoryStore::makeSnapshot(ThermalHistoryEnvelope envelope,
                                                            Instant now) const {
    return {std::move(envelope.samples),
            envelope.todaySummary ? *std::move(envelope.todaySummary) : freshSummary(now), now};
}

ThermalDailySummary ThermalHistoryStore::freshSummary(Instant instant) const {
    return ThermalDailySummary::fresh(calendar_.identifier(instant), instant);
}

} // namespace cindertop
