#include "assistant/ThermalAlert.h"

#include "support/Wording.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <optional>
#include <string>

namespace cindertop {

namespace {

using enum CinderInsightKind;

/// What an alert says when this kind of advice is the circumstance that matters.
struct BodyRow {
    CinderInsightKind context;
    Wording sustained;
    std::optional<Wording> critical = std::nullopt;     ///< absent: as for sustained pressure
    std::optional<Wording> withOffender = std::nullopt; ///< replaces both where the offender's label is known
};

/// Also what to say when there is no such advice.
constexpr BodyRow pressureAlone{
    .context = sustainedSeriousPressure,
    .sustained = Wording{"Cindertop sees sustained serious thermal pressure. Reducing the current workload "
                         "for a minute may help your Mac cool.",
                         "Cindertop sees sustained serious thermal pressure. Reducing the current workload "
                         "for a minute may help your laptop cool."},
    .critical = Wording{"Your Mac is under critical thermal pressure. Give it a short cooldown or reduce the "
                        "current workload.",
                        "Your laptop is under critical thermal pressure. Give it a short cooldown or reduce "
                        "the current workload."},
};

/// Of several kinds of advice the first row here counts. Kinds that report no problem have no row.
constexpr std::array bodyRows{
    BodyRow{
        .context = probableClamshellHeat,
        .sustained = Wording::same(
            "Clamshell mode is active during serious thermal pressure. Open the lid during long heavy work."),
        .critical = Wording::same("Thermal pressure is critical while clamshell mode is active. Open the lid "
                                  "and pause heavy work if you can."),
    },
    BodyRow{
        .context = externalDisplayThermalLoad,
        .sustained = Wording::same("External display load is active during serious thermal pressure. Lower "
                                   "refresh rate or unplug it during long work."),
        .critical = Wording::same("Thermal pressure is critical while an external display is active. Pause "
                                  "heavy work or lower display load."),
    },
    BodyRow{
        .context = developerBuildWorkload,
        .sustained =
            Wording{"A developer workload is adding heat. Let the build finish or switch to Low Power Mode.",
                    "A developer workload is adding heat. Let the build finish or switch to Power Saver."},
        .withOffender =
            Wording{"{name} is driving the build workload. Let it finish or switch to Low Power Mode.",
                    "{name} is driving the build workload. Let it finish or switch to Power Saver."},
    },
    BodyRow{
        .context = gamingFpsCapRecommended,
        .sustained = Wording::same(
            "A game workload is adding heat. Cap FPS or lower resolution for steadier thermals."),
        .withOffender = Wording::same(
            "{name} is the main graphics load. Cap FPS or lower resolution for steadier thermals."),
    },
    BodyRow{
        .context = localAIWorkload,
        .sustained =
            Wording::same("A local AI workload is adding heat. Pause it briefly if you need faster cooling."),
        .withOffender =
            Wording::same("{name} is running local AI workload. Pause the model if you need faster cooling."),
    },
    BodyRow{
        .context = browserTabLikely,
        .sustained = Wording::same(
            "A browser workload is adding heat. Close the busy tab or pause the web app if you can."),
        .withOffender = Wording::same(
            "{name} is the main browser load. Close the busy tab or pause the web app if you can."),
    },
    BodyRow{
        .context = topCpuOffender,
        .sustained =
            Wording{"A CPU-heavy app is active right now. Pausing it briefly may help your Mac cool.",
                    "A CPU-heavy app is active right now. Pausing it briefly may help your laptop cool."},
        .withOffender =
            Wording{"{name} is the main CPU load right now. Pausing it briefly may help your Mac cool.",
                    "{name} is the main CPU load right now. Pausing it briefly may help your laptop cool."},
    },
    BodyRow{
        .context = backgroundIndexingLikely,
        .sustained = Wording::same("Background indexing or setup work is likely active. Let it finish if you "
                                   "can; it usually settles on its own."),
    },
    BodyRow{
        .context = chargingAddsHeat,
        .sustained = Wording::same("Charging is adding heat during serious thermal pressure. Unplug briefly "
                                   "if you need steadier performance."),
        .critical = Wording::same(
            "Thermal pressure is critical while charging. Unplug briefly and pause heavy work if you can."),
    },
    pressureAlone,
};

constexpr Wording recoveryBody{
    "Your Mac is back below serious thermal pressure. Performance should feel steadier again.",
    "Your laptop is back below serious thermal pressure. Performance should feel steadier again."};
constexpr auto coolingRecoveryBody =
    Wording::same("Thermal pressure eased and the trend is cooling. Performance should feel steadier again.");

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
                             const std::optional<std::string>& topOffenderLabel, OperatingSystem system) {
    if (kind == ThermalAlertKind::recovery) {
        const auto& body =
            containsInsight(recommendation, coolingRecovery) ? coolingRecoveryBody : recoveryBody;
        return std::string(body.in(system));
    }
    const BodyRow& row = alertContext(recommendation);
    if (row.withOffender && topOffenderLabel) {
        return withName(row.withOffender->in(system), *topOffenderLabel);
    }
    const Wording body =
        kind == ThermalAlertKind::critical ? row.critical.value_or(row.sustained) : row.sustained;
    return std::string(body.in(system));
}

namespace {

constexpr auto thread = "cindertop.thermal";

/// Whole seconds since the Unix epoch; the fraction is dropped.
std::string secondsText(Instant instant) {
    return std::to_string(
        std::chrono::duration_cast<std::chrono::seconds>(instant.time_since_epoch()).count());
}

} // namespace

UserNotificationRequest notificationRequestFor(const ThermalAlert& alert) {
    const std::string category(rawValue(alert.kind));
    return {
        .identifier = std::string(thread) + "." + category + "." + secondsText(alert.issuedAt),
        .content =
            {
                .title = alert.title,
                .body = alert.body,
                .threadIdentifier = thread,
                .categoryIdentifier = category,
                .interruptionLevel = NotificationInterruptionLevel::active,
                .sound = std::nullopt,
                .badge = std::nullopt,
            },
        .delay = std::nullopt,
    };
}

} // namespace cindertop
