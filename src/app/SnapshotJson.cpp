#include "app/SnapshotJson.h"

#include "support/Enumeration.h"

#include <nlohmann/json.hpp>

#include <optional>

namespace cindertop {

namespace {

template <typename Value>
Json orNull(const std::optional<Value>& value) {
    return value ? Json(*value) : Json(nullptr);
}

template <typename Enumeration>
Json nameOrNull(const std::optional<Enumeration>& value) {
    return value ? Json(caseName(*value)) : Json(nullptr);
}

Json displaysJson(const DisplayContextSnapshot& displays) {
    Json json{{"isAvailable", displays.isAvailable},
              {"activeDisplayCount", displays.activeDisplayCount},
              {"builtInDisplayCount", displays.builtInDisplayCount},
              {"externalDisplayCount", displays.externalDisplayCount}};
    if (!displays.canFold) {
        json["canFold"] = false;
    }
    return json;
}

Json powerJson(const PowerContextSnapshot& power) {
    return {{"isAvailable", power.isAvailable},
            {"source", caseName(power.source)},
            {"batteryLevelPercent", orNull(power.batteryLevelPercent)},
            {"isCharging", orNull(power.isCharging)},
            {"isFullyCharged", orNull(power.isFullyCharged)},
            {"isLowPowerModeEnabled", power.isLowPowerModeEnabled},
            {"batteryTemperatureCelsius", orNull(power.batteryTemperatureCelsius)},
            {"batteryTemperatureLevel", nameOrNull(power.batteryTemperatureLevel)}};
}

Json pressureJson(const SustainedThermalPressureSnapshot& pressure) {
    return {{"isSustained", pressure.isSustained},
            {"activeDuration", pressure.activeDuration.count()},
            {"currentLevel", nameOrNull(pressure.currentLevel)},
            {"thresholdLevel", caseName(pressure.thresholdLevel)}};
}

} // namespace

Json SnapshotJson::score(const ThermalScore& score) {
    return {{"score", score.score},
            {"level", caseName(score.level)},
            {"effectIntensity", score.effectIntensity},
            {"shouldTriggerEffects", score.shouldTriggerEffects},
            {"recommendedSamplingHz", score.recommendedSamplingHz},
            {"temperatureCelsius", orNull(score.temperatureCelsius)},
            {"dataSource", caseName(score.dataSource)},
            {"systemState", caseName(score.systemState)},
            {"pressureLevel", caseName(score.pressureLevel)},
            {"trend", caseName(score.trend)}};
}

Json SnapshotJson::context(const SystemContextSnapshot& context) {
    return {{"displays", displaysJson(context.displays)},
            {"power", powerJson(context.power)},
            {"sustainedPressure", pressureJson(context.sustainedPressure)}};
}

Json SnapshotJson::temperatures(std::span<const TemperatureReading> readings) {
    auto list = Json::array();
    for (const auto& reading : readings) {
        Json entry = {{"id", reading.id},
                      {"label", reading.label},
                      {"celsius", reading.celsius},
                      {"kind", caseName(reading.kind)}};
        if (reading.age > Seconds::zero()) {
            entry["age"] = reading.age.count();
        }
        list.push_back(std::move(entry));
    }
    return list;
}

Json SnapshotJson::sources(std::span<const SourceStatus> sources) {
    auto list = Json::array();
    for (const auto& source : sources) {
        list.push_back({{"name", source.name}, {"available", source.isAvailable}, {"reason", source.reason}});
    }
    return list;
}

Json SnapshotJson::offenders(const ProcessOffenderSnapshot& snapshot) const {
    auto list = Json::array();
    for (const auto& each : snapshot.offenders) {
        list.push_back(offender(each));
    }
    const bool wasMeasured = snapshot != ProcessOffenderSnapshot::empty();
    return {{"state", caseName(snapshot.state)},
            {"isIndexingOrSetupLikely", snapshot.isIndexingOrSetupLikely},
            {"measuredAt", wasMeasured ? Json(seconds(snapshot.measuredAt)) : Json(nullptr)},
            {"offenders", std::move(list)}};
}

Json SnapshotJson::offender(const ProcessOffender& offender) const {
    auto children = Json::array();
    for (const auto& each : offender.children) {
        children.push_back(child(each));
    }
    auto history = Json::array();
    for (const auto& point : offender.history) {
        history.push_back(Json::array({seconds(point.measuredAt), point.cpuPercent}));
    }
    return {{"id", offender.id},
            {"displayName", offender.displayName},
            {"bundleIdentifier", orNull(offender.bundleIdentifier)},
            {"appBundlePath", orNull(offender.appBundlePath)},
            {"representativeProcessIdentifier", orNull(offender.representativeProcessIdentifier)},
            {"processCount", offender.processCount},
            {"cpuPercent", offender.cpuPercent},
            {"category", caseName(offender.category)},
            {"canTerminateApplication", offender.canTerminateApplication},
            {"children", std::move(children)},
            {"history", std::move(history)},
            {"startedAt", optionalSeconds(offender.startedAt)}};
}

Json SnapshotJson::child(const ProcessOffenderChild& child) const {
    return {{"processIdentifier", child.processIdentifier},
            {"parentProcessIdentifier", child.parentProcessIdentifier},
            {"name", child.name},
            {"cpuPercent", child.cpuPercent},
            {"isSystemProcess", child.isSystemProcess},
            {"startedAt", optionalSeconds(child.startedAt)}};
}

Json SnapshotJson::optionalSeconds(const std::optional<Instant>& instant) const {
    return instant ? Json(seconds(*instant)) : Json(nullptr);
}

std::string compactText(const Json& json) {
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::string indentedText(const Json& json) {
    return json.dump(2, ' ', false, Json::error_handler_t::replace);
}

} // namespace cindertop
