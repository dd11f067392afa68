#include "app/AppState.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace cindertop {

namespace {

using Status = ThermalAssistantPresentation::Status;

constexpr std::string_view beforeTerms =
    "Before you accept the terms of use, nothing is watched in the background and nothing is kept.";
constexpr std::string_view nothingTells = "This machine tells nothing about its temperature or throttling.";
constexpr std::string_view sensorsAreOff =
    "The temperature sensors are switched off, and nothing else tells this machine's heat.";

constexpr std::string_view switchedOff =
    "switched off; \"cindertopctl settings experimentalTemperatureSensorsEnabled true\" switches them on";

ThermalAssistantPresentation withoutLevel(Status status, std::string_view message) {
    return {.status = status,
            .trendLabel = std::nullopt,
            .menuBarTemperatureText = std::nullopt,
            .popoverTemperatureText = std::nullopt,
            .actionMessage = message.empty() ? std::nullopt : std::optional(std::string(message))};
}

/// A score of 0 that is no measurement would be called normal, or a recovery.
bool judgesHeat(const CinderInsight& insight) {
    return insight.kind == CinderInsightKind::normalForWorkload ||
           insight.kind == CinderInsightKind::coolingRecovery;
}

} // namespace

bool AppState::isHeatUnknown() const {
    return environment_.machine.operatingSystem == OperatingSystem::gnuLinux && latestThermalScore_ &&
           !isHeatKnown(*latestThermalScore_);
}

/// What is not asked because the user wants it so is no fault of the machine.
std::vector<SourceStatus> AppState::currentSources() const {
    auto sources = latestSources_;
    const auto sensors = std::ranges::find(sources, temperatureSensorsSource, &SourceStatus::name);
    if (sensors != sources.end() && !published_.settings->experimentalTemperatureSensorsEnabled) {
        sensors->isAvailable = false;
        sensors->reason = switchedOff;
    }
    return sources;
}

CinderRecommendationSnapshot AppState::currentRecommendation() const {
    auto advice = *published_.recommendationSnapshot;
    if (!isHeatUnknown()) {
        return advice;
    }
    std::erase_if(advice.secondaryInsights, judgesHeat);
    if (advice.primaryInsight && judgesHeat(*advice.primaryInsight)) {
        advice.primaryInsight.reset();
        if (auto& others = advice.secondaryInsights; !others.empty()) {
            advice.primaryInsight = std::move(others.front());
            others.erase(others.begin());
        }
    }
    return advice;
}

ThermalAssistantPresentation AppState::currentPresentation() const {
    if (environment_.machine.operatingSystem == OperatingSystem::gnuLinux && !*published_.isPaused) {
        if (!isMonitoringPermitted()) {
            return withoutLevel(Status::notMonitoring, beforeTerms);
        }
        if (!latestThermalScore_) {
            return withoutLevel(Status::measuring, {});
        }
    }
    if (!isHeatUnknown()) {
        return makePresentation(*published_.thermalSnapshot);
    }
    const auto advice = currentRecommendation().primaryInsight;
    const bool readsSensors = published_.settings->experimentalTemperatureSensorsEnabled;
    return withoutLevel(Status::noHeatReadings, advice         ? std::string_view(advice->message)
                                                : readsSensors ? nothingTells
                                                               : sensorsAreOff);
}

} // namespace cindertop
