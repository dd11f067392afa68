#include "app/MachineJsonReader.h"

#include "support/Enumeration.h"

#include <nlohmann/json.hpp>

#include <chrono>
#include <cmath>
#include <concepts>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace cindertop {

namespace {

constexpr double latestSecond = 9'000'000'000; ///< an Instant ends soon after

/// The library would cut off what does not fit.
template <std::integral Whole>
Whole wholeNumber(const Json& json) {
    const bool fits = json.is_number_unsigned()  ? std::in_range<Whole>(json.get<std::uint64_t>())
                      : json.is_number_integer() ? std::in_range<Whole>(json.get<std::int64_t>())
                                                 : false;
    if (!fits) {
        throw std::out_of_range("no such whole number");
    }
    return json.get<Whole>();
}

template <typename Value>
std::optional<Value> optionalValue(const Json& json) {
    return json.is_null() ? std::nullopt : std::optional(json.get<Value>());
}

template <std::integral Whole>
std::optional<Whole> optionalWholeNumber(const Json& json) {
    return json.is_null() ? std::nullopt : std::optional(wholeNumber<Whole>(json));
}

template <typename Enumeration>
Enumeration caseOf(const Json& json) {
    const auto name = json.get<std::string>();
    for (const auto& row : casesOf<Enumeration>()) {
        if (row.name == name) {
            return row.value;
        }
    }
    throw std::invalid_argument("no such case: " + name);
}

template <typename Enumeration>
std::optional<Enumeration> optionalCase(const Json& json) {
    return json.is_null() ? std::nullopt : std::optional(caseOf<Enumeration>(json));
}

Instant instantOf(const Json& json) {
    const auto seconds = json.get<double>();
    if (!(std::abs(seconds) < latestSecond)) {
        throw std::out_of_range("no instant");
    }
    return Instant(std::chrono::round<std::chrono::nanoseconds>(Seconds{seconds}));
}

std::optional<Instant> optionalInstant(const Json& json) {
    return json.is_null() ? std::nullopt : std::optional(instantOf(json));
}

template <typename Element, typename Read>
std::vector<Element> listOf(const Json& json, Read read) {
    if (!json.is_array()) {
        throw std::invalid_argument("no list");
    }
    std::vector<Element> list;
    for (const auto& element : json) {
        list.push_back(read(element));
    }
    return list;
}

ThermalScore scoreOf(const Json& json, Instant measuredAt) {
    return {wholeNumber<int>(json.at("score")),
            caseOf<ThermalLevel>(json.at("level")),
            json.at("effectIntensity").get<double>(),
            json.at("shouldTriggerEffects").get<bool>(),
            json.at("recommendedSamplingHz").get<double>(),
            optionalValue<double>(json.at("temperatureCelsius")),
            caseOf<ThermalDataSource>(json.at("dataSource")),
            caseOf<SystemThermalState>(json.at("systemState")),
            caseOf<ThermalPressureLevel>(json.at("pressureLevel")),
            caseOf<ThermalTrend>(json.at("trend")),
            measuredAt};
}

DisplayContextSnapshot displaysOf(const Json& json) {
    return {json.at("isAvailable").get<bool>(), wholeNumber<int>(json.at("activeDisplayCount")),
            wholeNumber<int>(json.at("builtInDisplayCount")),
            wholeNumber<int>(json.at("externalDisplayCount")), json.value("canFold", true)};
}

PowerContextSnapshot powerOf(const Json& json) {
    return {json.at("isAvailable").get<bool>(),
            caseOf<PowerSourceKind>(json.at("source")),
            optionalWholeNumber<int>(json.at("batteryLevelPercent")),
            optionalValue<bool>(json.at("isCharging")),
            optionalValue<bool>(json.at("isFullyCharged")),
            json.at("isLowPowerModeEnabled").get<bool>(),
            optionalValue<double>(json.at("batteryTemperatureCelsius")),
            optionalCase<BatteryTemperatureLevel>(json.at("batteryTemperatureLevel"))};
}

SustainedThermalPressureSnapshot pressureOf(const Json& json) {
    return {json.at("isSustained").get<bool>(), Seconds{json.at("activeDuration").get<double>()},
            optionalCase<ThermalLevel>(json.at("currentLevel")),
            caseOf<ThermalLevel>(json.at("thresholdLevel"))};
}

ProcessOffenderChild childOf(const Json& json) {
    return {wholeNumber<std::int32_t>(json.at("processIdentifier")),
            wholeNumber<std::int32_t>(json.at("parentProcessIdentifier")),
            json.at("name").get<std::string>(),
            json.at("cpuPercent").get<double>(),
            json.at("isSystemProcess").get<bool>(),
            optionalInstant(json.at("startedAt"))};
}

ProcessOffender offenderOf(const Json& json) {
    return ProcessOffender({.id = json.at("id").get<std::string>(),
                            .displayName = json.at("displayName").get<std::string>(),
                            .bundleIdentifier = optionalValue<std::string>(json.at("bundleIdentifier")),
                            .appBundlePath = optionalValue<std::string>(json.at("appBundlePath")),
                            .representativeProcessIdentifier =
                                optionalWholeNumber<std::int32_t>(json.at("representativeProcessIdentifier")),
                            .processCount = wholeNumber<std::int64_t>(json.at("processCount")),
                            .cpuPercent = json.at("cpuPercent").get<double>(),
                            .category = caseOf<ProcessOffenderCategory>(json.at("category")),
                            .canTerminateApplication = json.at("canTerminateApplication").get<bool>(),
                            .children = listOf<ProcessOffenderChild>(json.at("children"), childOf),
                            .history = listOf<ProcessOffenderHistoryPoint>(
                                json.at("history"),
                                [](const Json& point) {
                                    return ProcessOffenderHistoryPoint(instantOf(point.at(0)),
                                                                       point.at(1).get<double>());
                                }),
                            .startedAt = optionalInstant(json.at("startedAt"))});
}

ProcessOffenderSnapshot offendersOf(const Json& json) {
    return {.state = caseOf<ProcessOffenderSnapshotState>(json.at("state")),
            .offenders = listOf<ProcessOffender>(json.at("offenders"), offenderOf),
            .isIndexingOrSetupLikely = json.at("isIndexingOrSetupLikely").get<bool>(),
            .measuredAt = optionalInstant(json.at("measuredAt")).value_or(unixEpoch)};
}

TemperatureReading temperatureOf(const Json& json) {
    return {.id = json.at("id").get<std::string>(),
            .label = json.at("label").get<std::string>(),
            .celsius = json.at("celsius").get<double>(),
            .kind = caseOf<ThermalSensorKind>(json.at("kind")),
            .age = Seconds(json.value("age", 0.0))};
}

SourceStatus sourceOf(const Json& json) {
    return {.name = json.at("name").get<std::string>(),
            .isAvailable = json.at("available").get<bool>(),
            .reason = json.at("reason").get<std::string>()};
}

CinderInsight insightOf(const Json& json) {
    return {.kind = caseOf<CinderInsightKind>(json.at("kind")),
            .confidence = caseOf<CinderInsightConfidence>(json.at("confidence")),
            .title = json.at("title").get<std::string>(),
            .message = json.at("message").get<std::string>(),
            .relatedOffenderID = optionalValue<std::string>(json.at("relatedOffenderID"))};
}

MachineVerdict verdictOf(const Json& recommendation, const Json& presentation, Instant measuredAt) {
    const auto& primary = recommendation.at("primaryInsight");
    return {
        .recommendation = {.primaryInsight =
                               primary.is_null() ? std::nullopt : std::optional(insightOf(primary)),
                           .secondaryInsights =
                               listOf<CinderInsight>(recommendation.at("secondaryInsights"), insightOf),
                           .measuredAt = measuredAt},
        .presentation = {
            .status = caseOf<ThermalAssistantPresentation::Status>(presentation.at("status")),
            .trendLabel = optionalValue<std::string>(presentation.at("trendLabel")),
            .menuBarTemperatureText = optionalValue<std::string>(presentation.at("menuBarTemperatureText")),
            .popoverTemperatureText = optionalValue<std::string>(presentation.at("popoverTemperatureText")),
            .actionMessage = optionalValue<std::string>(presentation.at("actionMessage"))}};
}

MachineReport reportOf(const Json& json) {
    const auto measuredAt = instantOf(json.at("measuredAt"));
    const auto& context = json.at("context");
    MachineReport report{
        .snapshot = {.score = scoreOf(json.at("score"), measuredAt),
                     .context = {.displays = displaysOf(context.at("displays")),
                                 .power = powerOf(context.at("power")),
                                 .sustainedPressure = pressureOf(context.at("sustainedPressure")),
                                 .measuredAt = measuredAt},
                     .offenders = offendersOf(json.at("offenders")),
                     .cpuPercent = optionalValue<double>(json.at("cpuPercent")),
                     .temperatures = listOf<TemperatureReading>(json.at("temperatures"), temperatureOf),
                     .sources = listOf<SourceStatus>(json.at("sources"), sourceOf),
                     .measuredAt = measuredAt},
        .verdict = std::nullopt};
    if (!json.at("recommendation").is_null()) {
        report.verdict = verdictOf(json.at("recommendation"), json.at("presentation"), measuredAt);
    }
    return report;
}

} // namespace

std::optional<MachineReport> machineReport(std::string_view text) {
    try {
        const auto json = Json::parse(text);
        return json.at("score").is_null() ? std::nullopt : std::optional(reportOf(json));
    } catch (const Json::exception&) {
        return std::nullopt;
    } catch (const std::logic_error&) { // a case or an instant that there is not
        return std::nullopt;
    }
}

std::optional<AgentCondition> agentCondition(std::string_view text) {
    try {
        const auto json = Json::parse(text);
        return AgentCondition{.isPaused = json.at("isPaused").get<bool>(),
                              .areTermsAccepted = json.at("termsAccepted").get<bool>()};
    } catch (const Json::exception&) {
        return std::nullopt;
    }
}

} // namespace cindertop
