#include "persistence/ThermalHistoryEnvelope.h"
#include "support/PropertyListDocument.h"

#include <utility>
#include <vector>

namespace cindertop {
namespace {

std::optional<double> optionalReal(const PropertyListDictionary& dictionary, std::string_view key) {
    return dictionary.find(key).transform([](const PropertyListNode& node) { return node.real(); });
}

std::optional<std::string> optionalString(const PropertyListDictionary& dictionary, std::string_view key) {
    return dictionary.find(key).transform(
        [](const PropertyListNode& node) { return std::string(node.string()); });
}

ThermalLevel decodeLevel(const PropertyListNode& node) {
    const auto level = fromRawValue<ThermalLevel>(node.integer());
    if (!level) {
        throw PropertyListError(node.place(), "is no level");
    }
    return *level;
}

ThermalHistoryContextFlags decodeFlags(const PropertyListDictionary& flags) {
    return {
        .hasExternalDisplay = flags["hasExternalDisplay"].boolean(),
        .isProbableClamshell = flags["isProbableClamshell"].boolean(),
        .isExternalPowerConnected = flags["isExternalPowerConnected"].boolean(),
        .isLowPowerModeEnabled = flags["isLowPowerModeEnabled"].boolean(),
        .isSustainedPressure = flags["isSustainedPressure"].boolean(),
        .isIndexingOrSetupLikely = flags["isIndexingOrSetupLikely"].boolean(),
    };
}

ThermalHistorySample decodeSample(const PropertyListNode& node) {
    // In braces the values are read in this order, which is the order of the file.
    const auto sample = node.dictionary();
    return ThermalHistorySample{sample["measuredAt"].date(),
                                decodeLevel(sample["level"]),
                                sample["score"].integer(),
                                optionalReal(sample, "globalCPUPercent"),
                                optionalReal(sample, "temperatureCelsius"),
                                optionalString(sample, "topOffenderLabel"),
                                optionalString(sample, "topOffenderBundleIdentifier"),
                                decodeFlags(sample["contextFlags"].dictionary())};
}

ThermalLevelDurations decodeDurations(const PropertyListDictionary& durations) {
    return ThermalLevelDurations{durations["normal"].real(), durations["fair"].real(),
                                 durations["serious"].real(), durations["critical"].real()};
}

ThermalDailySummary::OffenderCounts decodeCounts(const PropertyListDictionary& dictionary) {
    ThermalDailySummary::OffenderCounts counts;
    for (const auto& [label, count] : dictionary.entries()) {
        counts.emplace(label, count.integer());
    }
    return counts;
}

ThermalDailySummary::OffenderIdentifiers decodeIdentifiers(const PropertyListDictionary& dictionary) {
    ThermalDailySummary::OffenderIdentifiers identifiers;
    for (const auto& [label, identifier] : dictionary.entries()) {
        identifiers.emplace(label, identifier.string());
    }
    return identifiers;
}

ThermalDailySummary decodeSummary(const PropertyListNode& node) {
    const auto summary = node.dictionary();
    return ThermalDailySummary{
        std::string(summary["dayIdentifier"].string()),
        decodeDurations(summary["levelDurations"].dictionary()),
        summary["throttlingEpisodeCount"].integer(),
        summary["criticalEpisodeCount"].integer(),
        decodeCounts(summary["topOffenderCounts"].dictionary()),
        summary.find("topOffenderBundleIdentifiers").transform([](const PropertyListNode& identifiers) {
            return decodeIdentifiers(identifiers.dictionary());
        }),
        summary["updatedAt"].date()};
}

ThermalHistoryEnvelope decodeEnvelope(const PropertyListNode& root) {
    const auto dictionary = root.dictionary();
    ThermalHistoryEnvelope envelope{dictionary["schemaVersion"].integer(), {}, {}};
    const auto nodes = dictionary["samples"].array();
    std::vector<ThermalHistorySample> samples;
    samples.reserve(nodes.size() + 1); // a new one will follow
    for (const PropertyListNode& node : nodes) {
        samples.push_back(decodeSample(node));
    }
    envelope.samples = std::move(samples);
    envelope.todaySummary = dictionary.find("todaySummary").transform(decodeSummary);
    return envelope;
}

} // namespace

std::expected<ThermalHistoryEnvelope, PropertyListError> decodeHistory(std::string text) {
    return decodedPropertyList(std::move(text), decodeEnvelope);
}

} // namespace cindertop
