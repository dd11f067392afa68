#include "persistence/ThermalHistoryStore.h"

#include "support/Instant.h"
#include "support/PropertyListText.h"
#include "support/UserFolders.h"

#include <algorithm>
#include <chrono>
#include <iterator>
#include <tuple>
#include <utility>
#include <vector>

namespace cindertop {
namespace {

Seconds atLeast(Seconds least, Seconds value) {
    return value > least ? value : least; // NaN is above nothing
}

void sort(SharedHistorySamples& samples) {
    if (!samples.areInOrder()) {
        std::vector<ThermalHistorySample> sorted(samples.begin(), samples.end());
        std::ranges::stable_sort(sorted, {}, &ThermalHistorySample::measuredAt);
        samples = std::move(sorted);
    }
}

} // namespace

std::chrono::nanoseconds HistoryWriting::pauseAfter(std::size_t bytes) {
    constexpr double bytesASecond = 5'500;
    constexpr Seconds shortest{60};
    constexpr Seconds longest{12 * 60};
    const auto pause = Seconds(static_cast<double>(bytes) / bytesASecond);
    return std::chrono::duration_cast<std::chrono::nanoseconds>(std::clamp(pause, shortest, longest));
}

std::filesystem::path ThermalHistoryStore::defaultFile() {
    return UserFolders::ofUser().programData() / "thermal-history.plist";
}

ThermalHistoryStore::ThermalHistoryStore(std::optional<std::filesystem::path> file, Seconds historyDuration,
                                         Seconds maximumAttributionGap, CalendarDays calendar,
                                         FileSystem& files, HistoryWriting writing)
    : file_(file ? *std::move(file) : defaultFile()),
      historyDuration_(atLeast(Seconds(60), historyDuration)),
      maximumAttributionGap_(atLeast(Seconds(10), maximumAttributionGap)),
      calendar_(std::move(calendar)),
      counter_(calendar_, historyDuration_, maximumAttributionGap_),
      files_(files),
      writing_(std::move(writing)) {}

ThermalMonitoringSnapshot ThermalHistoryStore::record(const ThermalHistorySample& sample,
                                                      std::optional<AwakeTime> awake) {
    const std::scoped_lock lock(mutex_);
    const Instant now = sample.measuredAt;
    ThermalHistoryEnvelope envelope = current();
    normalize(envelope, now);
    envelope.todaySummary = counter_.counting(envelope.todaySummary, envelope.samples, sample, awake);
    // What is held and what is handed out share their samples, so both have the sample as it will be read.
    const auto stored = writing_.isBehind() ? asStored(sample) : std::nullopt;
    envelope.samples.append(stored.value_or(sample));
    prune(envelope.samples, now);
    if (stored) {
        hold(envelope);
    } else if (!writing_.isBehind()) {
        // The next sample comes within seconds: a power cut may cost a few, and the disk may sleep.
        std::ignore = write(envelope, Durability::relaxed);
    }
    return makeSnapshot(std::move(envelope), now);
}

ThermalMonitoringSnapshot ThermalHistoryStore::snapshot(Instant now) {
    const std::scoped_lock lock(mutex_);
    ThermalHistoryEnvelope envelope = current();
    normalize(envelope, now);
    return makeSnapshot(std::move(envelope), now);
}

FileResult<void> ThermalHistoryStore::save() {
    const std::scoped_lock lock(mutex_);
    return isWritten_ ? FileResult<void>() : writeHeld();
}

void ThermalHistoryStore::noteSleep() {
    const std::scoped_lock lock(mutex_);
    counter_.noteSleep();
}

void ThermalHistoryStore::clear() {
    const std::scoped_lock lock(mutex_);
    held_.reset();
    isWritten_ = true;
    latestWrite_.reset();
    counter_.forget();
    std::ignore = removeFile(files_, file_);
}

ThermalHistoryEnvelope ThermalHistoryStore::current() {
    if (!writing_.isBehind()) {
        return load();
    }
    if (!held_) {
        held_ = load();
    }
    return *held_;
}

/// Keeps the contents in the form in which they would be read, and writes them when that is due.
void ThermalHistoryStore::hold(ThermalHistoryEnvelope& envelope) {
    envelope.todaySummary =
        envelope.todaySummary.transform([](const ThermalDailySummary& summary) { return asStored(summary); });
    held_ = envelope;
    isWritten_ = false;
    if (!latestWrite_ || writing_.clock() - *latestWrite_ >= pause_) {
        std::ignore = writeHeld();
    }
}

ThermalHistoryEnvelope ThermalHistoryStore::load() {
    auto text = wholeFile(files_, file_, propertyListSizeLimit);
    if (!text) {
        return {};
    }
    auto envelope = decodeHistory(*std::move(text));
    return envelope ? *std::move(envelope) : ThermalHistoryEnvelope{};
}

FileResult<void> ThermalHistoryStore::write(const ThermalHistoryEnvelope& envelope, Durability durability) {
    if (auto made = makeFolders(files_, file_.parent_path()); !made) {
        return made;
    }
    const auto text = encodeHistory(envelope);
    if (!text) {
        return std::unexpected(std::errc::result_out_of_range); // a number that no file can hold
    }
    pause_ = HistoryWriting::pauseAfter(text->size());
    return replaceFile(files_, file_, *text, durability);
}

FileResult<void> ThermalHistoryStore::writeHeld() {
    latestWrite_ = writing_.clock();
    pause_ = std::max(pause_, HistoryWriting::pauseAfter(0)); // without a folder there is no text yet
    auto written = write(*held_, Durability::synced);
    isWritten_ = written.has_value();
    return written;
}

void ThermalHistoryStore::normalize(ThermalHistoryEnvelope& envelope, Instant now) const {
    if (!envelope.todaySummary || envelope.todaySummary->dayIdentifier != calendar_.identifier(now)) {
        envelope.todaySummary = freshSummary(now);
    }
    sort(envelope.samples);
    prune(envelope.samples, now);
}

void ThermalHistoryStore::prune(SharedHistorySamples& samples, Instant now) const {
    const Instant oldest = instantBefore(now, historyDuration_);
    const auto isKept = [&](const ThermalHistorySample& sample) { return sample.measuredAt >= oldest; };
    if (samples.areInOrder()) {
        const auto* const first = std::ranges::find_if(samples, isKept);
        samples.removeFirst(static_cast<std::size_t>(first - samples.begin()));
        return;
    }
    std::vector<ThermalHistorySample> kept;
    std::ranges::copy_if(samples, std::back_inserter(kept), isKept);
    samples = std::move(kept);
}

ThermalMonitoringSnapshot ThermalHistoryStore::makeSnapshot(ThermalHistoryEnvelope envelope,
                                                            Instant now) const {
    const auto isNotLater = [now](const ThermalHistorySample& sample) { return sample.measuredAt <= now; };
    if (!std::ranges::all_of(envelope.samples, isNotLater)) { // the clock was set back since
        std::vector<ThermalHistorySample> shown;
        std::ranges::copy_if(envelope.samples, std::back_inserter(shown), isNotLater);
        envelope.samples = std::move(shown);
    }
    return {std::move(envelope.samples),
            envelope.todaySummary ? *std::move(envelope.todaySummary) : freshSummary(now), now};
}

ThermalDailySummary ThermalHistoryStore::freshSummary(Instant instant) const {
    return ThermalDailySummary::fresh(calendar_.identifier(instant), instant);
}

} // namespace cindertop
