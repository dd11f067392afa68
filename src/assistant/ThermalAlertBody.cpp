#include "assistant/ThermalAlertBody.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace cindertop {

namespace {

using enum CinderInsightKind;

/// What an alert says when this kind of advice is the circumstance that matters.
struct BodyRow {
    CinderInsightKind context;
    std::string_view sustained;
    std::optional<std::string_view> critical = std::nullopt; ///< absent: as for sustained pressure
    std::optional<std::string_view> behindLabel =
        std::nullopt; ///< replaces both, behind the offender's label where known
};

/// Also what to say when there is no such advice.
constexpr BodyRow pressureAlone{
    .context = sustainedSeriousPressure,
    .sustained =
        "Cindertop sees sustained serious thermal pressure. Reducing the current workload for a minute may "
        "help your Mac cool.",
    .critical = "Your Mac is under critical thermal pressure. Give it a short cooldown or reduce the current "
                "workload.",
};

/// Of several kinds of advice the first row here counts. Kinds that say all is well have no row.
constexpr std::array bodyRows{
    BodyRow{
        .context = probableClamshellHeat,
        .sustained =
            "Clamshell mode is active during serious thermal pressure. Open the lid during long heavy work.",
        .critical =
            "Thermal pressure is critical while clamshell mode is active. Open the lid and pause heavy work "
            "if you can.",
    },
    BodyRow{
        .context = externalDisplayThermalLoad,
        .sustained =
            "External display load is active during serious thermal pressure. Lower refresh rate or unplug "
            "it during long work.",
        .critical =
            "Thermal pressure is critical while an external display is active. Pause heavy work or lower "
            "display load.",
    },
    BodyRow{
        .context = developerBuildWorkload,
        .sustained = "A developer workload is adding heat. Let the build finish or switch to Low Power Mode.",
        .behindLabel = " is driving the build workload. Let it finish or switch to Low Power Mode.",
    },
    BodyRow{
        .context = gamingFpsCapRecommended,
        .sustained = "A game workload is adding heat. Cap FPS or lower resolution for steadier thermals.",
        .behindLabel = " is the main graphics load. Cap FPS or lower resolution for steadier thermals.",
    },
    BodyRow{
        .context = localAIWorkload,
        .sustained = "A local AI workload is adding heat. Pause it briefly if you need faster cooling.",
        .behindLabel = " is running local AI workload. Pause the model if you need faster cooling.",
    },
    BodyRow{
        .context = browserTabLikely,
        .sustained = "A browser workload is adding heat. Close the busy tab or pause the web app if you can.",
        .behindLabel = " is the main browser load. Close the busy tab or pause the web app if you can.",
    },
    BodyRow{
        .context = topCpuOffender,
        .sustained = "A CPU-heavy app is active right now. Pausing it briefly may help your Mac cool.",
        .behindLabel = " is the main CPU load right now. Pausing it briefly may help your Mac cool.",
    },
    BodyRow{
        .context = backgroundIndexingLikely,
        .sustained =
            "Background indexing or setup work is likely active. Let it finish if you can; it usually "
            "settles on its own.",
    },
    BodyRow{
        .context = chargingAddsHeat,
        .sustained =
            "Charging is adding heat during serious thermal pressure. Unplug briefly if you need steadier "
            "performance.",
        .critical =
            "Thermal pressure is critical while charging. Unplug briefly and pause heavy work if you can.",
    },
    pressureAlone,
};

constexpr std::string_view recoveryBody =
    "Your Mac is back below serious thermal pressure. Performance should feel steadier again.";
constexpr std::string_view coolingRecoveryBody =
    "Thermal pressure eased and the trend is cooling. Performance should feel steadier again.";

bool containsInsight(const CinderRecommendationSnapshot& recommendation, CinderInsightKind kind) {
    const auto& [primary, secondaries, measuredAt] = recommendation;
    return (primary && primary->kind == kind) ||
           std::ranges::find(secondaries, kind, &CinderInsight::kind) != secondaries.end();
}

const BodyRow& alertContext(const CinderRecommendationSnapshot& recommendation) {
    const auto* const row = std::ranges::find_if(
        bodyRows, [&](CinderInsightKind kind) { return containsInsight(recommendation, kind); },
        &BodyRow::context);
    return row == bodyRows.end() ? pressureAlone : *row;
}

} // namespace

std::string thermalAlertBody(ThermalAlertKind kind, const CinderRecommendationSnapshot& recommendation,
                             const std::optional<std::string>& topOffenderLabel) {
    if (kind == ThermalAlertKind::recovery) {
        return std::string(containsInsight(recommendation, coolingRecovery) ? coolingRecoveryBody
                                                                            : recoveryBody);
    }
    const BodyRow& row = alertContext(recommendation);
    if (row.behindLabel && topOffenderLabel) {
        return *topOffenderLabel + std::string(*row.behindLabel);
    }
    return std::string(kind == ThermalAlertKind::critical ? row.critical.value_or(row.sustained)
                                                          : row.sustained);
}

} // namespace cindertop
