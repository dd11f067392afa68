#include "persistence/ThermalHistoryEnvelope.h"
#include "support/PropertyListText.h"
#include "support/PropertyListWriter.h"

#include <chrono>
#include <cmath>
#include <limits>
#include <string_view>
#include <utility>

namespace cindertop {
namespace {

void encodeFlags(PropertyListWriter& writer, const ThermalHistoryContextFlags& flags) {
    writer.beginDictionary();
    writer.key("hasExternalDisplay");
    writer.boolean(flags.hasExternalDisplay);
    writer.key("isProbableClamshell");
    writer.boolean(flags.isProbableClamshell);
    writer.key("isExternalPowerConnected");
    writer.boolean(flags.isExternalPowerConnected);
    writer.key("isLowPowerModeEnabled");
    writer.boolean(flags.isLowPowerModeEnabled);
    writer.key("isSustainedPressure");
    writer.boolean(flags.isSustainedPressure);
    writer.key("isIndexingOrSetupLikely");
    writer.boolean(flags.isIndexingOrSetupLikely);
    writer.endDictionary();
}

void encodeOptional(PropertyListWriter& writer, std::string_view key, const std::optional<double>& number) {
    if (number) {
        writer.key(key);
        writer.real(*number);
    }
}

void encodeOptional(PropertyListWriter& writer, std::string_view key,
                    const std::optional<std::string>& text) {
    if (text) {
        writer.key(key);
        writer.string(*text);
    }
}

void encodeSample(PropertyListWriter& writer, const ThermalHistorySample& sample) {
    writer.beginDictionary();
    writer.key("measuredAt");
    writer.date(sample.measuredAt);
    writer.key("level");
    writer.integer(rawValue(sample.level));
    writer.key("score");
    writer.integer(sample.score);
    encodeOptional(writer, "globalCPUPercent", sample.globalCPUPercent);
    encodeOptional(writer, "temperatureCelsius", sample.temperatureCelsius);
    encodeOptional(writer, "topOffenderLabel", sample.topOffenderLabel);
    encodeOptional(writer, "topOffenderBundleIdentifier", sample.topOffenderBundleIdentifier);
    writer.key("contextFlags");
    encodeFlags(writer, sample.contextFlags);
    writer.endDictionary();
}

void encodeDurations(PropertyListWriter& writer, const ThermalLevelDurations& durations) {
    writer.beginDictionary();
    writer.key("normal");
    writer.real(durations.normal);
    writer.key("fair");
    writer.real(durations.fair);
    writer.key("serious");
    writer.real(durations.serious);
    writer.key("critical");
    writer.real(durations.critical);
    writer.endDictionary();
}

/// Labels that differ only in characters that cannot be written are one label in the file, which could not be
/// read otherwise.
ThermalDailySummary::OffenderCounts writable(const ThermalDailySummary::OffenderCounts& counts) {
    ThermalDailySummary::OffenderCounts result;
    for (const auto& [label, count] : counts) {
        auto& sum = result[writablePropertyListText(label)];
        if (__builtin_add_overflow(sum, count, &sum)) {
            sum = std::numeric_limits<std::int64_t>::max();
        }
    }
    return result;
}

ThermalDailySummary::OffenderIdentifiers
writable(const ThermalDailySummary::OffenderIdentifiers& identifiers) {
    ThermalDailySummary::OffenderIdentifiers result;
    for (const auto& [label, identifier] : identifiers) {
        result.insert_or_assign(writablePropertyListText(label), writablePropertyListText(identifier));
    }
    return result;
}

void encodeCounts(PropertyListWriter& writer, const ThermalDailySummary::OffenderCounts& counts) {
    writer.beginDictionary();
    for (const auto& [label, count] : writable(counts)) {
        writer.key(label);
        writer.integer(count);
    }
    writer.endDictionary();
}

void encodeIdentifiers(PropertyListWriter& writer,
                       const ThermalDailySummary::OffenderIdentifiers& identifiers) {
    writer.beginDictionary();
    for (const auto& [label, identifier] : writable(identifiers)) {
        writer.key(label);
        writer.string(identifier);
    }
    writer.endDictionary();
}

void encodeSummary(PropertyListWriter& writer, const ThermalDailySummary& summary) {
    writer.beginDictionary();
    writer.key("dayIdentifier");
    writer.string(summary.dayIdentifier);
    writer.key("levelDurations");
    encodeDurations(writer, summary.levelDurations);
    writer.key("throttlingEpisodeCount");
    writer.integer(summary.throttlingEpisodeCount);
    writer.key("criticalEpisodeCount");
    writer.integer(summary.criticalEpisodeCount);
    writer.key("topOffenderCounts");
    encodeCounts(writer, summary.topOffenderCounts);
    if (summary.topOffenderBundleIdentifiers) {
        writer.key("topOffenderBundleIdentifiers");
        encodeIdentifiers(writer, *summary.topOffenderBundleIdentifiers);
    }
    writer.key("updatedAt");
    writer.date(summary.updatedAt);
    writer.endDictionary();
}

std::string encodeEnvelope(const ThermalHistoryEnvelope& envelope) {
    constexpr std::size_t bytesASample = 720;
    PropertyListWriter writer(PropertyListLayout::compact, (envelope.samples.size() + 8) * bytesASample);
    writer.beginDictionary();
    writer.key("schemaVersion");
    writer.integer(envelope.schemaVersion);
    writer.key("samples");
    writer.beginArray();
    for (const ThermalHistorySample& sample : envelope.samples) {
        encodeSample(writer, sample);
    }
    writer.endArray();
    if (envelope.todaySummary) {
        writer.key("todaySummary");
        encodeSummary(writer, *envelope.todaySummary);
    }
    writer.endDictionary();
    return std::move(writer).finish();
}

Instant wholeSecond(Instant instant) {
    return std::chrono::floor<std::chrono::seconds>(instant);
}

} // namespace

std::optional<ThermalHistorySample> asStored(const ThermalHistorySample& sample) {
    if (sample.temperatureCelsius && !std::isfinite(*sample.temperatureCelsius)) {
        return std::nullopt;
    }
    // The label goes through its sanitiser once more, as it does when it is read.
    return ThermalHistorySample(wholeSecond(sample.measuredAt), sample.level, sample.score,
                                sample.globalCPUPercent, sample.temperatureCelsius,
                                sample.topOffenderLabel.transform(writablePropertyListText),
                                sample.topOffenderBundleIdentifier, sample.contextFlags);
}

ThermalDailySummary asStored(const ThermalDailySummary& summary) {
    auto stored = summary;
    stored.topOffenderCounts = writable(summary.topOffenderCounts);
    if (summary.topOffenderBundleIdentifiers) {
        stored.topOffenderBundleIdentifiers = writable(*summary.topOffenderBundleIdentifiers);
    }
    stored.updatedAt = wholeSecond(summary.updatedAt);
    return stored;
}

std::expected<std::string, PropertyListError> encodeHistory(const ThermalHistoryEnvelope& envelope) {
    try {
        return encodeEnvelope(envelope);
    } catch (const PropertyListError& error) {
        return std::unexpected(error);
    }
}

} // namespace cindertop
