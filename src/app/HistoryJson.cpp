#include "app/HistoryJson.h"

#include "support/Enumeration.h"

#include <nlohmann/json.hpp>

#include <optional>
#include <utility>

namespace cindertop {

namespace {

template <typename Value>
Json orNull(const std::optional<Value>& value) {
    return value ? Json(*value) : Json(nullptr);
}

Json flagsJson(const ThermalHistoryContextFlags& flags) {
    return {{"hasExternalDisplay", flags.hasExternalDisplay},
            {"isProbableClamshell", flags.isProbableClamshell},
            {"isExternalPowerConnected", flags.isExternalPowerConnected},
            {"isLowPowerModeEnabled", flags.isLowPowerModeEnabled},
            {"isSustainedPressure", flags.isSustainedPressure},
            {"isIndexingOrSetupLikely", flags.isIndexingOrSetupLikely}};
}

/// The keys of a map ascend; an empty map is an object, too.
template <typename Map>
Json mapJson(const Map& map) {
    auto object = Json::object();
    for (const auto& [key, value] : map) {
        object[key] = value;
    }
    return object;
}

} // namespace

Json HistoryJson::sample(const ThermalHistorySample& sample) const {
    return {{"measuredAt", snapshots_.seconds(sample.measuredAt)},
            {"level", caseName(sample.level)},
            {"score", sample.score},
            {"globalCPUPercent", orNull(sample.globalCPUPercent)},
            {"temperatureCelsius", orNull(sample.temperatureCelsius)},
            {"topOffenderLabel", orNull(sample.topOffenderLabel)},
            {"topOffenderBundleIdentifier", orNull(sample.topOffenderBundleIdentifier)},
            {"contextFlags", flagsJson(sample.contextFlags)}};
}

Json HistoryJson::summary(const ThermalDailySummary& summary) const {
    const auto& durations = summary.levelDurations;
    const auto& identifiers = summary.topOffenderBundleIdentifiers;
    return {{"dayIdentifier", summary.dayIdentifier},
            {"levelDurations",
             {{"normal", durations.normal},
              {"fair", durations.fair},
              {"serious", durations.serious},
              {"critical", durations.critical}}},
            {"throttlingEpisodeCount", summary.throttlingEpisodeCount},
            {"criticalEpisodeCount", summary.criticalEpisodeCount},
            {"topOffenderCounts", mapJson(summary.topOffenderCounts)},
            {"topOffenderBundleIdentifiers", identifiers ? mapJson(*identifiers) : Json(nullptr)},
            {"updatedAt", snapshots_.seconds(summary.updatedAt)}};
}

Json HistoryJson::snapshot(const ThermalMonitoringSnapshot& snapshot) const {
    auto samples = Json::array();
    for (const auto& each : snapshot.samples) {
        samples.push_back(sample(each));
    }
    return {{"samples", std::move(samples)}, {"todaySummary", summary(snapshot.todaySummary)}};
}

} // namespace cindertop
