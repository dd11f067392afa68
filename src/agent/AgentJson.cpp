#include "agent/AgentJson.h"

#include "app/AssistantJson.h"
#include "app/MachineJson.h"
#include "support/Enumeration.h"

#include <nlohmann/json.hpp>

#include <array>

namespace cindertop::agent {

namespace {

constexpr std::array machineKeys{"score",   "context",    "offenders",  "recommendation", "presentation",
                                 "sources", "measuredAt", "cpuPercent", "temperatures"};

Json nothingMeasured(const ThermalAssistantPresentation& presentation) {
    Json json;
    for (const auto* const key : machineKeys) {
        json[key] = nullptr;
    }
    json["presentation"] = presentationJson(presentation);
    return json;
}

} // namespace

Json agentJson(const AppState& state) {
    const auto& published = state.published();
    const auto presentation = state.currentPresentation();
    const auto machine = state.machineSnapshot();
    auto json = machine
                    ? machineJson(*machine, MachineVerdict{.recommendation = state.currentRecommendation(),
                                                           .presentation = presentation})
                    : nothingMeasured(presentation);
    json["notificationState"] = caseName(*published.systemNotificationState);
    json["isPaused"] = *published.isPaused;
    json["termsAccepted"] = *published.legalTermsAccepted;
    return json;
}

} // namespace cindertop::agent
