#include "persistence/ThermalHistory.h"

#include "support/Text.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace cindertop {

namespace {

constexpr std::size_t longestLabel = 48;
constexpr std::size_t longestBundleIdentifier = 128;

constexpr bool isIdentifierCharacter(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '.' ||
           c == '_' || c == '-';
}

} // namespace

std::optional<std::string> sanitizedLabel(std::string_view label) {
    const std::string_view trimmed = trimmingUnicodeWhitespace(label);
    if (trimmed.empty()) {
        return std::nullopt;
    }
    // Without a separator npos + 1 is 0: the whole text.
    const std::string_view lastPiece = trimmed.substr(trimmed.find_last_of("/\\:") + 1);
    return std::string(firstCharacters(lastPiece, longestLabel));
}

std::optional<std::string> sanitizedBundleIdentifier(std::string_view identifier) {
    const std::string_view trimmed = trimmingUnicodeWhitespace(identifier);
    if (trimmed.empty() || !std::ranges::all_of(trimmed, isIdentifierCharacter)) {
        return std::nullopt;
    }
    return std::string(trimmed.substr(0, longestBundleIdentifier));
}

namespace {

double clampedPercent(double percent) {
    return percent > 0 ? std::min(percent, 100.0) : 0; // NaN is above nothing
}

} // namespace

ThermalHistorySample::ThermalHistorySample(Instant measuredAt, ThermalLevel level, std::int64_t score,
                                           std::optional<double> globalCPUPercent,
                                           std::optional<double> temperatureCelsius,
                                           const std::optional<std::string>& topOffenderLabel,
                                           const std::optional<std::string>& topOffenderBundleIdentifier,
                                           const ThermalHistoryContextFlags& contextFlags)
    : measuredAt(measuredAt),
      level(level),
      score(std::clamp<std::int64_t>(score, 0, 100)),
      globalCPUPercent(globalCPUPercent.transform(clampedPercent)),
      temperatureCelsius(temperatureCelsius),
      topOffenderLabel(topOffenderLabel.and_then(sanitizedLabel)),
      topOffenderBundleIdentifier(topOffenderBundleIdentifier.and_then(sanitizedBundleIdentifier)),
      contextFlags(contextFlags) {}

SharedHistorySamples::SharedHistorySamples(std::vector<ThermalHistorySample> samples)
    : storage_(std::make_shared<std::vector<ThermalHistorySample>>(std::move(samples))),
      first_(storage_->data()),
      count_(storage_->size()),
      areInOrder_(std::ranges::is_sorted(*storage_, {}, &ThermalHistorySample::measuredAt)) {}

SharedHistorySamples::SharedHistorySamples(std::initializer_list<ThermalHistorySample> samples)
    : SharedHistorySamples(std::vector(samples)) {}

bool SharedHistorySamples::hasRoomBehind() const {
    return storage_ && storage_->data() + storage_->size() == end() &&
           storage_->size() < storage_->capacity();
}

void SharedHistorySamples::append(ThermalHistorySample sample) {
    constexpr std::size_t leastRoom = 64;
    if (!hasRoomBehind()) {
        auto roomier = std::make_shared<std::vector<ThermalHistorySample>>();
        roomier->reserve(count_ + std::max(count_ / 2, leastRoom));
        roomier->assign(begin(), end());
        first_ = roomier->data();
        storage_ = std::move(roomier);
    }
    areInOrder_ = areInOrder_ && (empty() || back().measuredAt <= sample.measuredAt);
    storage_->push_back(std::move(sample));
    ++count_;
}

void SharedHistorySamples::removeFirst(std::size_t count) {
    first_ += count;
    count_ -= count;
}

bool SharedHistorySamples::operator==(const SharedHistorySamples& other) const {
    return count_ == other.count_ && (first_ == other.first_ || std::equal(begin(), end(), other.begin()));
}

// A maximum with 0 first is 0 for what is no number, too.
ThermalLevelDurations::ThermalLevelDurations(double normal, double fair, double serious, double critical)
    : normal(std::max(0.0, normal)),
      fair(std::max(0.0, fair)),
      serious(std::max(0.0, serious)),
      critical(std::max(0.0, critical)) {}

ThermalLevelDurations ThermalLevelDurations::adding(double seconds, ThermalLevel level) const {
    const auto share = [&](ThermalLevel of) { return of == level ? seconds : 0.0; };
    return ThermalLevelDurations(normal + share(ThermalLevel::normal), fair + share(ThermalLevel::fair),
                                 serious + share(ThermalLevel::serious),
                                 critical + share(ThermalLevel::critical));
}

ThermalDailySummary::ThermalDailySummary(std::string dayIdentifier,
                                         const ThermalLevelDurations& levelDurations,
                                         std::int64_t throttlingEpisodeCount,
                                         std::int64_t criticalEpisodeCount, OffenderCounts topOffenderCounts,
                                         std::optional<OffenderIdentifiers> topOffenderBundleIdentifiers,
                                         Instant updatedAt)
    : dayIdentifier(std::move(dayIdentifier)),
      levelDurations(levelDurations),
      throttlingEpisodeCount(std::max<std::int64_t>(throttlingEpisodeCount, 0)),
      criticalEpisodeCount(std::max<std::int64_t>(criticalEpisodeCount, 0)),
      topOffenderCounts(std::move(topOffenderCounts)),
      topOffenderBundleIdentifiers(std::move(topOffenderBundleIdentifiers)),
      updatedAt(updatedAt) {}

ThermalDailySummary ThermalDailySummary::fresh(std::string dayIdentifier, Instant updatedAt) {
    return {std::move(dayIdentifier), ThermalLevelDurations(), 0, 0, {}, OffenderIdentifiers{}, updatedAt};
}

std::optional<std::string>
ThermalDailySummary::leadingOffenderLabel(const LocalizedComparison& comparison) const {
    if (topOffenderCounts.empty()) {
        return std::nullopt;
    }
    const auto comesFirst = [&](const auto& left, const auto& right) {
        return left.second != right.second ? left.second > right.second
                                           : comparison.compare(left.first, right.first) < 0;
    };
    return std::ranges::min_element(topOffenderCounts, comesFirst)->first;
}

std::optional<std::string>
ThermalDailySummary::leadingOffenderBundleIdentifier(const LocalizedComparison& comparison) const {
    const auto label = leadingOffenderLabel(comparison);
    if (!label || !topOffenderBundleIdentifiers) {
        return std::nullopt;
    }
    const auto found = topOffenderBundleIdentifiers->find(*label);
    return found == topOffenderBundleIdentifiers->end() ? std::nullopt : std::optional(found->second);
}

const ThermalMonitoringSnapshot& ThermalMonitoringSnapshot::empty() {
    static const ThermalMonitoringSnapshot snapshot{
        {}, ThermalDailySummary::fresh("unknown", unixEpoch), unixEpoch};
    return snapshot;
}

bool areLevelsMeasured(const ThermalMonitoringSnapshot& snapshot) {
    const auto& durations = snapshot.todaySummary.levelDurations;
    return snapshot.samples.empty() || durations.totalDuration() != durations.normal ||
           std::ranges::any_of(snapshot.samples, [](const auto& sample) { return isHeatKnown(sample); });
}

} // namespace cindertop
