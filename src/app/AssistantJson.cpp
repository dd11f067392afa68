#include "app/AssistantJson.h"

#include "support/Enumeration.h"

#include <nlohmann/json.hpp>

namespace cindertop {

namespace {

Json orNull(const std::optional<std::string>& text) {
    return text ? Json(*text) : Json(nullptr);
}

Json insightJson(const CinderInsight& insight) {
    return {{"kind", caseName(insight.kind)},
            {"confidence", caseName(insight.confidence)},
            {"title", insight.title},
            {"message", insight.message},
            {"relatedOffenderID", orNull(insight.relatedOffenderID)}};
}

} // namespace

Json recommendationJson(const CinderRecommendationSnapshot& snapshot) {
    auto secondaries = Json::array();
    for (const auto& insight : snapshot.secondaryInsights) {
        secondaries.push_back(insightJson(insight));
    }
    return {
        {"primaryInsight", snapshot.primaryInsight ? insightJson(*snapshot.primaryInsight) : Json(nullptr)},
        {"secondaryInsights", std::move(secondaries)}};
}

Json presentationJson(const ThermalAssistantPresentation& presentation) {
    return {{"status", caseName(presentation.status)},
            {"trendLabel", orNull(presentation.trendLabel)},
            {"menuBarTemperatureText", orNull(presentation.menuBarTemperatureText)},
            {"popoverTemperatureText", orNull(presentation.popoverTemperatureText)},
            {"actionMessage", orNull(presentation.actionMessage)}};
}

} // namespace cindertop
