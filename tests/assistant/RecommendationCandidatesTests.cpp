#include "assistant/AssistantInputs.h"
#include "assistant/RecommendationCandidates.h"

#include <gtest/gtest.h>

namespace cindertop::testing {

namespace {

using enum ThermalLevel;
using enum CinderInsightKind;
using Advice = std::vector<RecommendationCandidate>;
using Confidence = CinderInsightConfidence;

constexpr auto defaults = RecommendationEngineConfiguration::defaultConfiguration();

RecommendationCandidate row(int priority, CinderInsightKind kind, Confidence confidence, std::string title,
                            std::string message) {
    return {{kind, confidence, std::move(title), std::move(message), std::nullopt}, priority};
}

const auto criticalNow = row(0, sustainedSeriousPressure, Confidence::high, "Critical thermal pressure",
                             "macOS reports critical thermal pressure. Pause heavy work if you can.");
const auto lasting =
    row(5, sustainedSeriousPressure, Confidence::high, "Sustained thermal pressure",
        "macOS has reported serious thermal pressure for a while. Pause the heavy task or use "
        "Low Power Mode for steadier work.");
const auto clamshell = row(15, probableClamshellHeat, Confidence::high, "Clamshell heat",
                           "Clamshell mode may be trapping heat. Open the lid during long heavy work.");
const auto cooling =
    row(20, coolingRecovery, Confidence::high, "Cooling down", "Temperature is falling. No action needed.");
const auto externalDisplay =
    row(25, externalDisplayThermalLoad, Confidence::medium, "External display load",
        "External display load may be adding heat. Lower refresh rate or unplug it during long work.");
const auto charging =
    row(50, chargingAddsHeat, Confidence::medium, "Charging heat",
        "Charging can add heat during heavy work. Unplug briefly if you need faster cooling.");
const auto seriousNow =
    row(70, sustainedSeriousPressure, Confidence::medium, "Serious thermal pressure",
        "macOS reports serious thermal pressure. Pause heavy work if performance feels uneven.");
const auto elevated =
    row(85, normalForWorkload, Confidence::medium, "Elevated but manageable",
        "Thermal pressure is elevated, but this still looks manageable. No action needed yet.");
const auto calm = row(90, normalForWorkload, Confidence::high, "Normal workload",
                      "This looks normal for the current workload. No action needed.");

RecommendationCandidate indexing(int priority) {
    return row(priority, backgroundIndexingLikely, Confidence::medium, "Background indexing",
               "Spotlight or setup work is active. It usually settles on its own.");
}

RecommendationCandidate browserAt(double share, ThermalLevel level) {
    return {{browserTabLikely, Confidence::medium, "Browser workload",
             "Safari (" + std::to_string(static_cast<int>(share)) +
                 "% CPU) is the main load. A busy tab or web app may be adding heat.",
             "id:Safari"},
            level < serious ? 40 : 30};
}

ProcessOffender safari(double share) {
    return offender("Safari", share, ProcessOffenderCategory::browserWorkload);
}

SystemContextSnapshot with(const SustainedThermalPressureSnapshot& pressure) {
    auto context = quietContext();
    context.sustainedPressure = pressure;
    return context;
}

SystemContextSnapshot with(const DisplayContextSnapshot& displays) {
    auto context = quietContext();
    context.displays = displays;
    return context;
}

SystemContextSnapshot with(const PowerContextSnapshot& power) {
    auto context = quietContext();
    context.power = power;
    return context;
}

/// As `charging`, but with no word on whether that can be known.
PowerContextSnapshot unavailablePower() {
    auto snapshot = power(PowerSourceKind::acPower, true);
    snapshot.isAvailable = false;
    return snapshot;
}

struct Case {
    ThermalScore score;
    SystemContextSnapshot context;
    Advice expected;
};

TEST(RecommendationCandidates, TellThePressureAndWhatAddsToIt) {
    using enum PowerSourceKind;
    const auto falling = ThermalTrend::cooling;
    const auto quiet = quietContext();
    for (const auto& [score, context, expected] : std::vector<Case>{
             {scoreOf(normal), quiet, {calm}},
             {scoreOf(normal, ThermalTrend::rising), quiet, {calm}},
             {scoreOf(normal, falling), quiet, {cooling, calm}},
             {scoreOf(fair, falling), quiet, {cooling, elevated}},
             {scoreOf(serious, falling), quiet, {seriousNow}},
             {scoreOf(critical), with(sustained(130, critical)), {criticalNow, criticalNow}},
             {scoreOf(serious), with(sustained(130, serious)), {lasting, seriousNow}},
             // the pressure's own level counts, and the score's only without one
             {scoreOf(serious), with(sustained(130, fair)), {seriousNow}},
             {scoreOf(fair), with(sustained(130, serious)), {lasting, elevated}},
             {scoreOf(serious), with(sustained(130, std::nullopt)), {lasting, seriousNow}},
             {scoreOf(fair), with(sustained(130, std::nullopt)), {elevated}},
             {scoreOf(fair), with(displays(0, 0)), {elevated}},
             {scoreOf(fair), with(displays(0, 1)), {clamshell, elevated}},
             {scoreOf(fair), with(displays(1, 1)), {externalDisplay, elevated}},
             {scoreOf(normal), with(displays(0, 1)), {calm}},
             {scoreOf(fair), with(DisplayContextSnapshot{false, 1, 0, 1}), {elevated}},
             {scoreOf(fair), with(power(acPower, true)), {charging, elevated}},
             {scoreOf(fair), with(power(upsPower, true)), {charging, elevated}},
             {scoreOf(normal), with(power(acPower, true)), {calm}},
             {scoreOf(fair), with(power(acPower, std::nullopt)), {elevated}},
             {scoreOf(fair), with(power(batteryPower, true)), {elevated}},
             {scoreOf(fair), with(power(unknown, true)), {elevated}},
             {scoreOf(fair), with(unavailablePower()), {elevated}},
         }) {
        EXPECT_EQ(recommendationCandidates(score, context, ProcessOffenderSnapshot::empty(), defaults),
                  expected)
            << rawValue(score.level) << ", expected first: " << expected.front().insight.title;
    }
}

TEST(RecommendationCandidates, TellTheProcessesWhenTheyAreKnown) {
    struct ProcessCase {
        ThermalLevel level;
        ProcessOffenderSnapshot offenders;
        Advice expected;
    };

    auto collecting = readyOffenders({safari(30)}, true);
    collecting.state = ProcessOffenderSnapshotState::collecting;
    for (const auto& [level, offenders, expected] : std::vector<ProcessCase>{
             {fair, readyOffenders({safari(30)}, true), {browserAt(30, fair), indexing(45), elevated}},
             {serious,
              readyOffenders({safari(30)}, true),
              {browserAt(30, serious), indexing(45), seriousNow}},
             {normal, readyOffenders({safari(30)}, true), {indexing(80), calm}},
             {normal, readyOffenders({safari(30)}), {calm}},
             {fair, collecting, {elevated}},
             {fair, readyOffenders({}), {elevated}},
             {fair, readyOffenders({safari(4.9), safari(30)}), {elevated}},
             {fair, readyOffenders({safari(5.0), safari(30)}), {browserAt(5, fair), elevated}},
         }) {
        EXPECT_EQ(recommendationCandidates(scoreOf(level), quietContext(), offenders, defaults), expected)
            << rawValue(level) << ", expected first: " << expected.front().insight.title;
    }
}

TEST(RecommendationCandidates, GoByUrgencyThenByKindThenAsTheyWereAdded) {
    auto context = with(displays(0, 1));
    context.power = power(PowerSourceKind::acPower, true);
    const auto busy = readyOffenders({safari(30)}, true);
    const auto advice = [&](bool includesProcesses, bool includesContext) {
        return recommendationCandidates(scoreOf(critical), context, busy,
                                        {2, 2, includesProcesses, includesContext});
    };
    const auto browser = browserAt(30, critical);
    EXPECT_EQ(advice(true, true),
              (Advice{criticalNow, criticalNow, clamshell, browser, indexing(45), charging}));
    EXPECT_EQ(advice(false, true), (Advice{criticalNow, criticalNow, clamshell, charging}));
    EXPECT_EQ(advice(true, false), (Advice{criticalNow, criticalNow, browser, indexing(45)}));

    // One priority and one kind: the system's indexing, then the offender that does it.
    const auto indexer = offender("Spotlight", 30, ProcessOffenderCategory::indexingOrSetup);
    auto byOffender = indexing(45);
    byOffender.insight.confidence = Confidence::high;
    byOffender.insight.relatedOffenderID = "id:Spotlight";
    EXPECT_EQ(
        recommendationCandidates(scoreOf(fair), quietContext(), readyOffenders({indexer}, true), defaults),
        (Advice{indexing(45), byOffender, elevated}));
}

} // namespace

} // namespace cindertop::testing
