#include "assistant/RecommendationCandidates.h"

#include "assistant/OffenderAdvice.h"
#include "support/Wording.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <optional>
#include <span>
#include <string>
#include <tuple>

namespace cindertop {

namespace {

using enum CinderInsightKind;
using enum CinderInsightConfidence;

/// Below this share, in percent of the whole machine, not even the busiest offender is worth advice.
constexpr double minimumOffenderShare = 5.0;

/// Up to this share of a graphics engine drawing is not worth advice.
constexpr double mostUnremarkableGraphics = 25.0;

struct Circumstances {
    const ThermalScore& score;
    const SystemContextSnapshot& context;
    const ProcessOffenderSnapshot& offenders;
    const RecommendationEngineConfiguration& configuration;
};

template <ThermalLevel level>
bool isAt(const Circumstances& now) {
    return now.score.level == level;
}

bool isAboveNormal(const Circumstances& now) {
    return now.score.level != ThermalLevel::normal;
}

bool isSeriousForAWhile(const Circumstances& now) {
    const auto& pressure = now.context.sustainedPressure;
    return !isAt<ThermalLevel::critical>(now) && pressure.isSustained &&
           pressure.currentLevel.value_or(now.score.level) >= ThermalLevel::serious;
}

bool isCooling(const Circumstances& now) {
    return now.score.trend == ThermalTrend::cooling && now.score.level < ThermalLevel::serious;
}

bool isClamshellHot(const Circumstances& now) {
    return now.configuration.includeContextInsights && isAboveNormal(now) &&
           now.context.displays.isProbableClamshell();
}

bool isExternalDisplayHot(const Circumstances& now) {
    const auto& displays = now.context.displays;
    return now.configuration.includeContextInsights && isAboveNormal(now) && displays.isAvailable &&
           displays.hasExternalDisplay() && displays.isBuiltInDisplayActive();
}

bool areProcessesKnown(const Circumstances& now) {
    return now.configuration.includeProcessInsights &&
           now.offenders.state == ProcessOffenderSnapshotState::ready;
}

bool isIndexing(const Circumstances& now) {
    return areProcessesKnown(now) && now.offenders.isIndexingOrSetupLikely;
}

bool isIndexingAboveNormal(const Circumstances& now) {
    return isIndexing(now) && isAboveNormal(now);
}

bool isIndexingAtNormal(const Circumstances& now) {
    return isIndexing(now) && isAt<ThermalLevel::normal>(now);
}

bool isChargingHot(const Circumstances& now) {
    const auto& power = now.context.power;
    return now.configuration.includeContextInsights && isAboveNormal(now) && power.isAvailable &&
           power.isExternalPowerConnected() && power.isCharging == true;
}

struct AdviceRow {
    bool (*applies)(const Circumstances&);
    CinderInsightKind kind;
    CinderInsightConfidence confidence;
    Wording title;
    Wording message;
    int priority;
};

constexpr auto criticalTitle = Wording::same("Critical thermal pressure");
constexpr Wording criticalMessage{
    "macOS reports critical thermal pressure. Pause heavy work if you can.",
    "The system reports critical thermal pressure. Pause heavy work if you can."};

/// Every row that applies gives its advice. That about the busiest offender comes between the two tables.
constexpr auto rowsBeforeOffender = std::to_array<AdviceRow>({
    {.applies = isAt<ThermalLevel::critical>,
     .kind = sustainedSeriousPressure,
     .confidence = high,
     .title = criticalTitle,
     .message = criticalMessage,
     .priority = 0},
    {.applies = isSeriousForAWhile,
     .kind = sustainedSeriousPressure,
     .confidence = high,
     .title = Wording::same("Sustained thermal pressure"),
     .message = {"macOS has reported serious thermal pressure for a while. "
                 "Pause the heavy task or use Low Power Mode for steadier work.",
                 "The system has reported serious thermal pressure for a while. "
                 "Pause the heavy task or switch to Power Saver for steadier work."},
     .priority = 5},
    {.applies = isCooling,
     .kind = coolingRecovery,
     .confidence = high,
     .title = Wording::same("Cooling down"),
     .message = Wording::same("Temperature is falling. No action needed."),
     .priority = 20},
    {.applies = isClamshellHot,
     .kind = probableClamshellHeat,
     .confidence = high,
     .title = Wording::same("Clamshell heat"),
     .message = Wording::same("Clamshell mode may be trapping heat. Open the lid during long heavy work."),
     .priority = 15},
    {.applies = isExternalDisplayHot,
     .kind = externalDisplayThermalLoad,
     .confidence = medium,
     .title = Wording::same("External display load"),
     .message = Wording::same(
         "External display load may be adding heat. Lower refresh rate or unplug it during long work."),
     .priority = 25},
    {.applies = isIndexingAboveNormal,
     .kind = backgroundIndexingLikely,
     .confidence = medium,
     .title = backgroundIndexingTitle,
     .message = backgroundIndexingMessage,
     .priority = 45},
    {.applies = isIndexingAtNormal,
     .kind = backgroundIndexingLikely,
     .confidence = medium,
     .title = backgroundIndexingTitle,
     .message = backgroundIndexingMessage,
     .priority = 80},
});

constexpr auto rowsBehindOffender = std::to_array<AdviceRow>({
    {.applies = isChargingHot,
     .kind = chargingAddsHeat,
     .confidence = medium,
     .title = Wording::same("Charging heat"),
     .message =
         Wording::same("Charging can add heat during heavy work. Unplug briefly if you need faster cooling."),
     .priority = 50},
    {.applies = isAt<ThermalLevel::normal>,
     .kind = normalForWorkload,
     .confidence = high,
     .title = Wording::same("Normal workload"),
     .message = Wording::same("This looks normal for the current workload. No action needed."),
     .priority = 90},
    {.applies = isAt<ThermalLevel::fair>,
     .kind = normalForWorkload,
     .confidence = medium,
     .title = Wording::same("Elevated but manageable"),
     .message = Wording::same(
         "Thermal pressure is elevated, but this still looks manageable. No action needed yet."),
     .priority = 85},
    {.applies = isAt<ThermalLevel::serious>,
     .kind = sustainedSeriousPressure,
     .confidence = medium,
     .title = Wording::same("Serious thermal pressure"),
     .message =
         {"macOS reports serious thermal pressure. Pause heavy work if performance feels uneven.",
          "The system reports serious thermal pressure. Pause heavy work if performance feels uneven."},
     .priority = 70},
    {.applies = isAt<ThermalLevel::critical>,
     .kind = sustainedSeriousPressure,
     .confidence = high,
     .title = criticalTitle,
     .message = criticalMessage,
     .priority = 0},
});

std::vector<RecommendationCandidate> applyingAdvice(std::span<const AdviceRow> rows, const Circumstances& now,
                                                    OperatingSystem system) {
    std::vector<RecommendationCandidate> candidates;
    for (const AdviceRow& row : rows) {
        if (row.applies(now)) {
            candidates.push_back({.insight = {.kind = row.kind,
                                              .confidence = row.confidence,
                                              .title = std::string(row.title.in(system)),
                                              .message = std::string(row.message.in(system)),
                                              .relatedOffenderID = std::nullopt},
                                  .priority = row.priority});
        }
    }
    return candidates;
}

/// The offender that is worth advice, or null.
const ProcessOffender* busiestOffender(const Circumstances& now) {
    const auto& offenders = now.offenders.offenders;
    if (!areProcessesKnown(now) || !isAboveNormal(now) || offenders.empty()) {
        return nullptr;
    }
    return offenders.front().cpuPercent >= minimumOffenderShare ? &offenders.front() : nullptr;
}

/// The one that keeps the graphics busiest, if that is worth advice, or null.
const ProcessOffender* busiestDrawer(const Circumstances& now) {
    const auto& offenders = now.offenders.offenders;
    if (!areProcessesKnown(now) || !isAboveNormal(now) || offenders.empty()) {
        return nullptr;
    }
    const auto drawer = std::ranges::max_element(offenders, {}, &ProcessOffender::graphicsPercent);
    return drawer->graphicsPercent > mostUnremarkableGraphics ? &*drawer : nullptr;
}

} // namespace

std::vector<RecommendationCandidate>
recommendationCandidates(const ThermalScore& score, const SystemContextSnapshot& context,
                         const ProcessOffenderSnapshot& offenders,
                         const RecommendationEngineConfiguration& configuration, OperatingSystem system) {
    const Circumstances now{
        .score = score, .context = context, .offenders = offenders, .configuration = configuration};
    auto candidates = applyingAdvice(rowsBeforeOffender, now, system);
    if (const auto* const offender = busiestOffender(now)) {
        candidates.push_back(offenderAdvice(*offender, score.level, system));
    }
    if (const auto* const drawer = busiestDrawer(now)) {
        candidates.push_back(graphicsAdvice(*drawer, offenders.offenders.front().cpuPercent, score.level));
    }
    std::ranges::move(applyingAdvice(rowsBehindOffender, now, system), std::back_inserter(candidates));

    std::ranges::stable_sort(candidates, {}, [](const RecommendationCandidate& candidate) {
        return std::tuple(candidate.priority, rawValue(candidate.insight.kind));
    });
    return candidates;
}

} // namespace cindertop
