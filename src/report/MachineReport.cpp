#include "report/MachineReport.h"

#include "report/JsonRecord.h"
#include "thermal/ThermalScorer.h"

#include <array>

namespace cindertop {

template <>
inline constexpr auto jsonFields<ThermalScore> = std::tuple{
    JsonField{"score", &ThermalScore::score},
    JsonField{"level", &ThermalScore::level},
    JsonField{"effectIntensity", &ThermalScore::effectIntensity},
    JsonField{"shouldTriggerEffects", &ThermalScore::shouldTriggerEffects},
    JsonField{"recommendedSamplingHz", &ThermalScore::recommendedSamplingHz},
    JsonField{"temperatureCelsius", &ThermalScore::temperatureCelsius},
    JsonField{"dataSource", &ThermalScore::dataSource},
    JsonField{"systemState", &ThermalScore::systemState},
    JsonField{"pressureLevel", &ThermalScore::pressureLevel},
    JsonField{"trend", &ThermalScore::trend},
};

template <>
inline constexpr auto jsonFields<DisplayContextSnapshot> = std::tuple{
    JsonField{"isAvailable", &DisplayContextSnapshot::isAvailable},
    JsonField{"activeDisplayCount", &DisplayContextSnapshot::activeDisplayCount},
    JsonField{"builtInDisplayCount", &DisplayContextSnapshot::builtInDisplayCount},
    JsonField{"externalDisplayCount", &DisplayContextSnapshot::externalDisplayCount},
    UnusualJsonField{"canFold", &DisplayContextSnapshot::canFold, true},
};

template <>
inline constexpr auto jsonFields<PowerContextSnapshot> = std::tuple{
    JsonField{"isAvailable", &PowerContextSnapshot::isAvailable},
    JsonField{"source", &PowerContextSnapshot::source},
    JsonField{"batteryLevelPercent", &PowerContextSnapshot::batteryLevelPercent},
    JsonField{"isCharging", &PowerContextSnapshot::isCharging},
    JsonField{"isFullyCharged", &PowerContextSnapshot::isFullyCharged},
    JsonField{"isLowPowerModeEnabled", &PowerContextSnapshot::isLowPowerModeEnabled},
    JsonField{"batteryTemperatureCelsius", &PowerContextSnapshot::batteryTemperatureCelsius},
    JsonField{"batteryTemperatureLevel", &PowerContextSnapshot::batteryTemperatureLevel},
    OptionalJsonField{"batteryWatts", &PowerContextSnapshot::batteryWatts},
};

template <>
inline constexpr auto jsonFields<SustainedThermalPressureSnapshot> = std::tuple{
    JsonField{"isSustained", &SustainedThermalPressureSnapshot::isSustained},
    JsonField{"activeDuration", &SustainedThermalPressureSnapshot::activeDuration},
    JsonField{"currentLevel", &SustainedThermalPressureSnapshot::currentLevel},
    JsonField{"thresholdLevel", &SustainedThermalPressureSnapshot::thresholdLevel},
};

template <>
inline constexpr auto jsonFields<ChipPowerReading> = std::tuple{
    JsonField{"name", &ChipPowerReading::name},
    JsonField{"watts", &ChipPowerReading::watts},
};

template <>
inline constexpr auto jsonFields<FanReading> = std::tuple{
    JsonField{"name", &FanReading::name},
    JsonField{"revolutionsPerMinute", &FanReading::revolutionsPerMinute},
};

template <>
inline constexpr auto jsonFields<MeterReadings> = std::tuple{
    JsonField{"machineWatts", &MeterReadings::machineWatts},
    JsonField{"chips", &MeterReadings::chips},
    JsonField{"fans", &MeterReadings::fans},
};

template <>
inline constexpr auto jsonFields<ClockLimit> = std::tuple{
    JsonField{"allowedHertz", &ClockLimit::allowedHertz},
    JsonField{"possibleHertz", &ClockLimit::possibleHertz},
};

template <>
inline constexpr auto jsonFields<SpeedLimits> = std::tuple{
    JsonField{"clock", &SpeedLimits::clock},
    JsonField{"isOfSomeCores", &SpeedLimits::isOfSomeCores},
    JsonField{"heldBy", &SpeedLimits::heldBy},
};

template <>
inline constexpr auto jsonFields<HardwareContextSnapshot> = std::tuple{
    OptionalJsonField{"meters", &HardwareContextSnapshot::meters},
    OptionalJsonField{"processor", &HardwareContextSnapshot::processor},
};

template <>
inline constexpr auto jsonFields<SystemContextSnapshot> = std::tuple{
    JsonField{"displays", &SystemContextSnapshot::displays},
    JsonField{"power", &SystemContextSnapshot::power},
    JsonField{"sustainedPressure", &SystemContextSnapshot::sustainedPressure},
    OptionalJsonField{"hardware", &SystemContextSnapshot::hardware},
};

template <>
inline constexpr auto jsonFields<ProcessOffenderChild> = std::tuple{
    JsonField{"processIdentifier", &ProcessOffenderChild::processIdentifier},
    JsonField{"parentProcessIdentifier", &ProcessOffenderChild::parentProcessIdentifier},
    JsonField{"name", &ProcessOffenderChild::name},
    JsonField{"cpuPercent", &ProcessOffenderChild::cpuPercent},
    JsonField{"isSystemProcess", &ProcessOffenderChild::isSystemProcess},
    JsonField{"startedAt", &ProcessOffenderChild::startedAt},
    UnusualJsonField{"graphicsPercent", &ProcessOffenderChild::graphicsPercent, std::optional<double>{}},
};

template <>
Json encodeJson(const ProcessOffenderHistoryPoint& value, Instant start) {
    return Json::array({encodeJson(value.measuredAt, start), value.cpuPercent});
}

template <>
ProcessOffenderHistoryPoint decodeJson(const Json& json) {
    return {decodeJson<Instant>(json.at(0)), decodeJson<double>(json.at(1))};
}

template <>
inline constexpr auto jsonFields<ProcessOffender> = std::tuple{
    JsonField{"id", &ProcessOffender::id},
    JsonField{"displayName", &ProcessOffender::displayName},
    JsonField{"bundleIdentifier", &ProcessOffender::bundleIdentifier},
    JsonField{"appBundlePath", &ProcessOffender::appBundlePath},
    JsonField{"representativeProcessIdentifier", &ProcessOffender::representativeProcessIdentifier},
    JsonField{"processCount", &ProcessOffender::processCount},
    JsonField{"cpuPercent", &ProcessOffender::cpuPercent},
    JsonField{"category", &ProcessOffender::category},
    JsonField{"canTerminateApplication", &ProcessOffender::canTerminateApplication},
    JsonField{"children", &ProcessOffender::children},
    JsonField{"history", &ProcessOffender::history},
    JsonField{"startedAt", &ProcessOffender::startedAt},
    UnusualJsonField{"graphicsPercent", &ProcessOffender::graphicsPercent, std::optional<double>{}},
};

template <>
inline constexpr auto jsonFields<ProcessOffenderSnapshot> = std::tuple{
    JsonField{"state", &ProcessOffenderSnapshot::state},
    JsonField{"isIndexingOrSetupLikely", &ProcessOffenderSnapshot::isIndexingOrSetupLikely},
    MeasuredJsonField{"measuredAt", &ProcessOffenderSnapshot::measuredAt},
    JsonField{"offenders", &ProcessOffenderSnapshot::offenders},
};

template <>
inline constexpr auto jsonFields<TemperatureLimits> = std::tuple{
    JsonField{"slowsFromCelsius", &TemperatureLimits::slowsFrom},
    JsonField{"switchesOffAtCelsius", &TemperatureLimits::switchesOffAt},
};

template <>
inline constexpr auto jsonFields<TemperatureRange> = std::tuple{
    JsonField{"lowestCelsius", &TemperatureRange::lowest},
    JsonField{"highestCelsius", &TemperatureRange::highest},
};

template <>
inline constexpr auto jsonFields<TemperatureReading> = std::tuple{
    JsonField{"id", &TemperatureReading::id},
    JsonField{"label", &TemperatureReading::label},
    JsonField{"celsius", &TemperatureReading::celsius},
    JsonField{"kind", &TemperatureReading::kind},
    UnusualJsonField{"age", &TemperatureReading::age, Seconds{0}},
    OptionalJsonField{"limits", &TemperatureReading::limits},
    OptionalJsonField{"range", &TemperatureReading::range},
};

template <>
inline constexpr auto jsonFields<SourceStatus> = std::tuple{
    JsonField{"name", &SourceStatus::name},
    JsonField{"available", &SourceStatus::isAvailable},
    JsonField{"reason", &SourceStatus::reason},
};

template <>
inline constexpr auto jsonFields<CinderInsight> = std::tuple{
    JsonField{"kind", &CinderInsight::kind},
    JsonField{"confidence", &CinderInsight::confidence},
    JsonField{"title", &CinderInsight::title},
    JsonField{"message", &CinderInsight::message},
    JsonField{"relatedOffenderID", &CinderInsight::relatedOffenderID},
};

template <>
inline constexpr auto jsonFields<CinderRecommendationSnapshot> = std::tuple{
    JsonField{"primaryInsight", &CinderRecommendationSnapshot::primaryInsight},
    JsonField{"secondaryInsights", &CinderRecommendationSnapshot::secondaryInsights},
};

template <>
inline constexpr auto jsonFields<ThermalAssistantPresentation> = std::tuple{
    JsonField{"status", &ThermalAssistantPresentation::status},
    JsonField{"trendLabel", &ThermalAssistantPresentation::trendLabel},
    JsonField{"menuBarTemperatureText", &ThermalAssistantPresentation::menuBarTemperatureText},
    JsonField{"popoverTemperatureText", &ThermalAssistantPresentation::popoverTemperatureText},
    JsonField{"actionMessage", &ThermalAssistantPresentation::actionMessage},
};

template <>
inline constexpr auto jsonFields<ThermalScoreSteps> = std::tuple{
    JsonField{"basis", &ThermalScoreSteps::basis},
    JsonField{"points", &ThermalScoreSteps::points},
    JsonField{"risingBonus", &ThermalScoreSteps::risingBonus},
};

template Json encodeJson(const ThermalScore& value, Instant start);
template Json encodeJson(const SystemContextSnapshot& value, Instant start);
template Json encodeJson(const ProcessOffenderSnapshot& value, Instant start);
template Json encodeJson(const CinderRecommendationSnapshot& value, Instant start);
template Json encodeJson(const ThermalAssistantPresentation& value, Instant start);

namespace {

struct MachineMember {
    const char* key;
    Json (*write)(const MachineReport& report);
};

template <auto Part>
Json partJson(const MachineReport& report) {
    return report.advice ? encodeJson((*report.advice).*Part) : Json(nullptr);
}

template <auto Part>
Json snapshotJson(const MachineReport& report) {
    return encodeJson(report.snapshot.*Part);
}

Json scoreStepsJson(const MachineReport& report) {
    const auto steps = ThermalScorer::steps(report.snapshot.score, ThermalTemperatureThresholds::defaults());
    return steps.basis == ThermalScoreBasis::nothing ? Json(nullptr) : encodeJson(steps);
}

constexpr std::array machineMembers{
    MachineMember{"score", snapshotJson<&MachineSnapshot::score>},
    MachineMember{"context", snapshotJson<&MachineSnapshot::context>},
    MachineMember{"offenders", snapshotJson<&MachineSnapshot::offenders>},
    MachineMember{"recommendation", partJson<&MachineAdvice::recommendation>},
    MachineMember{"presentation", partJson<&MachineAdvice::presentation>},
    MachineMember{"sources", snapshotJson<&MachineSnapshot::sources>},
    MachineMember{"measuredAt", snapshotJson<&MachineSnapshot::measuredAt>},
    MachineMember{"cpuPercent", snapshotJson<&MachineSnapshot::cpuPercent>},
    MachineMember{"temperatures", snapshotJson<&MachineSnapshot::temperatures>},
    MachineMember{"scoreSteps", scoreStepsJson},
};

template <typename Member>
void readMember(Member& member, const Json& json, const char* key) {
    member = decodeJson<Member>(json.at(key));
}

MachineReport reportOf(const Json& json) {
    const auto measuredAt = decodeJson<Instant>(json.at("measuredAt"));
    MachineReport report{
        .snapshot = {.score = decodeRecord<ThermalScore>(json.at("score"), measuredAt),
                     .context = decodeRecord<SystemContextSnapshot>(json.at("context"), measuredAt),
                     .offenders = {},
                     .cpuPercent = {},
                     .temperatures = {},
                     .sources = {},
                     .measuredAt = measuredAt}};
    readMember(report.snapshot.offenders, json, "offenders");
    readMember(report.snapshot.cpuPercent, json, "cpuPercent");
    readMember(report.snapshot.temperatures, json, "temperatures");
    readMember(report.snapshot.sources, json, "sources");
    if (!json.at("recommendation").is_null()) {
        auto& advice = report.advice.emplace();
        readMember(advice.recommendation, json, "recommendation");
        readMember(advice.presentation, json, "presentation");
        advice.recommendation.measuredAt = measuredAt;
    }
    return report;
}

} // namespace

Json machineJson(const MachineReport& report) {
    auto json = Json::object();
    for (const auto& member : machineMembers) {
        json[member.key] = member.write(report);
    }
    return json;
}

Json unmeasuredMachineJson() {
    auto json = Json::object();
    for (const auto& member : machineMembers) {
        json[member.key] = nullptr;
    }
    return json;
}

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
