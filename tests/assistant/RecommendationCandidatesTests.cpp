#include "assistant/AssistantInputs.h"
#include "assistant/OffenderAdvice.h"
#include "assistant/RecommendationCandidates.h"
#include "assistant/ThermalAlert.h"

#include <gtest/gtest.h>

#include <tuple>

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

ProcessOffender safari(double share) {
    return offender("Safari", share, ProcessOffenderCategory::browserWorkload);
}

RecommendationCandidate browser(ThermalLevel level, double share = 30) {
    return offenderAdvice(safari(share), level, OperatingSystem::mac);
}

/// The raw values, a blank behind each.
std::string rawValuesOf(const auto& cases) {
    std::string values;
    for (const auto& row : cases) {
        values.append(row.rawValue).append(" ");
    }
    return values;
}

TEST(RecommendationCandidates, TellThePressureAndWhatAddsToIt) {
    using enum PowerSourceKind;
    const auto falling = ThermalTrend::cooling;
    const auto quiet = contextWith();
    for (const auto& [score, context, expected] :
         std::vector<std::tuple<ThermalScore, SystemContextSnapshot, Advice>>{
             {scoreOf(normal), quiet, {calm}},
             {scoreOf(normal, ThermalTrend::rising), quiet, {calm}},
             {scoreOf(normal, falling), quiet, {cooling, calm}},
             {scoreOf(fair, falling), quiet, {cooling, elevated}},
             {scoreOf(serious, falling), quiet, {seriousNow}},
             {scoreOf(critical), contextWith(sustained(130, critical)), {criticalNow, criticalNow}},
             {scoreOf(serious), contextWith(sustained(130, serious)), {lasting, seriousNow}},
             // the pressure's own level counts, and the score's only without one
             {scoreOf(serious), contextWith(sustained(130, fair)), {seriousNow}},
             {scoreOf(fair), contextWith(sustained(130, serious)), {lasting, elevated}},
             {scoreOf(serious), contextWith(sustained(130, std::nullopt)), {lasting, seriousNow}},
             {scoreOf(fair), contextWith(sustained(130, std::nullopt)), {elevated}},
             {scoreOf(fair), contextWith(displays(0, 0)), {elevated}},
             {scoreOf(fair), contextWith(displays(0, 1)), {clamshell, elevated}},
             {scoreOf(fair), contextWith(displays(1, 1)), {externalDisplay, elevated}},
             {scoreOf(normal), contextWith(displays(0, 1)), {calm}},
             {scoreOf(fair), contextWith(DisplayContextSnapshot{false, 1, 0, 1}), {elevated}},
             {scoreOf(fair), contextWith(DisplayContextSnapshot{false, 2, 1, 1}), {elevated}},
             {scoreOf(fair), contextWith(power(acPower, true)), {charging, elevated}},
             {scoreOf(fair), contextWith(power(upsPower, true)), {charging, elevated}},
             {scoreOf(normal), contextWith(power(acPower, true)), {calm}},
             {scoreOf(fair), contextWith(power(acPower, std::nullopt)), {elevated}},
             {scoreOf(fair), contextWith(power(batteryPower, true)), {elevated}},
             {scoreOf(fair), contextWith(power(unknown, true)), {elevated}},
             {scoreOf(fair), contextWith(power(acPower, true, false)), {elevated}},
         }) {
        EXPECT_EQ(recommendationCandidates(score, context, ProcessOffenderSnapshot::empty(), defaults,
                                           OperatingSystem::mac),
                  expected)
            << rawValue(score.level) << ", expected first: " << expected.front().insight.title;
    }
}

TEST(RecommendationCandidates, TellTheProcessesWhenTheyAreKnown) {
    auto collecting = readyOffenders({safari(30)}, true);
    collecting.state = ProcessOffenderSnapshotState::collecting;
    for (const auto& [level, offenders, expected] :
         std::vector<std::tuple<ThermalLevel, ProcessOffenderSnapshot, Advice>>{
             {fair, readyOffenders({safari(30)}, true), {browser(fair), indexing(45), elevated}},
             {serious, readyOffenders({safari(30)}, true), {browser(serious), indexing(45), seriousNow}},
             {normal, readyOffenders({safari(30)}, true), {indexing(80), calm}},
             {normal, readyOffenders({safari(30)}), {calm}},
             {fair, collecting, {elevated}},
             {fair, readyOffenders({}), {elevated}},
             {fair, readyOffenders({safari(4.9), safari(30)}), {elevated}},
             {fair, readyOffenders({safari(5.0), safari(30)}), {browser(fair, 5), elevated}},
         }) {
        EXPECT_EQ(recommendationCandidates(scoreOf(level), contextWith(), offenders, defaults,
                                           OperatingSystem::mac),
                  expected)
            << rawValue(level) << ", expected first: " << expected.front().insight.title;
    }
}

TEST(RecommendationCandidates, NameWhoDrawsMoreThanAQuarter) {
    auto game = offender("Game", 4, ProcessOffenderCategory::userApplication);
    const auto drawing = [&game](double share) {
        auto copy = game;
        copy.graphicsPercent = share;
        return copy;
    };
    const auto graphics = [](int priority, const std::string& share) {
        auto advice = row(priority, graphicsWorkload, Confidence::medium, "Graphics workload",
                          "Game (" + share +
                              "% GPU) keeps the graphics busy. Pause video or animations, or lower the frame "
                              "rate, for steadier thermals.");
        advice.insight.relatedOffenderID = "id:Game";
        return advice;
    };
    for (const auto& [level, offenders, expected] :
         std::vector<std::tuple<ThermalLevel, ProcessOffenderSnapshot, Advice>>{
             {normal, readyOffenders({drawing(90)}), {calm}},
             {fair, readyOffenders({drawing(25)}), {elevated}},
             {fair, readyOffenders({drawing(25.6)}), {graphics(39, "26"), elevated}},
             {fair, readyOffenders({safari(30), drawing(28)}), {browser(fair), graphics(43, "28"), elevated}},
             {fair, readyOffenders({safari(30), drawing(60)}), {graphics(39, "60"), browser(fair), elevated}},
             {serious,
              readyOffenders({safari(30), drawing(60)}),
              {graphics(29, "60"), browser(serious), seriousNow}},
             {serious,
              readyOffenders({safari(30), drawing(30)}),
              {browser(serious), graphics(36, "30"), seriousNow}},
         }) {
        EXPECT_EQ(recommendationCandidates(scoreOf(level), contextWith(), offenders, defaults,
                                           OperatingSystem::mac),
                  expected)
            << rawValue(level) << ", expected first: " << expected.front().insight.title;
    }
}

TEST(RecommendationCandidates, GoByUrgencyThenByKindThenAsTheyWereAdded) {
    const auto context = contextWith(displays(0, 1), power(PowerSourceKind::acPower, true));
    const auto busy = readyOffenders({safari(30)}, true);
    const auto advice = [&](bool includesProcesses, bool includesContext) {
        return recommendationCandidates(scoreOf(critical), context, busy,
                                        {2, 2, includesProcesses, includesContext}, OperatingSystem::mac);
    };
    EXPECT_EQ(advice(true, true),
              (Advice{criticalNow, criticalNow, clamshell, browser(critical), indexing(45), charging}));
    EXPECT_EQ(advice(false, true), (Advice{criticalNow, criticalNow, clamshell, charging}));
    EXPECT_EQ(advice(true, false), (Advice{criticalNow, criticalNow, browser(critical), indexing(45)}));

    // One priority and one kind: the system's indexing, then the offender that does it.
    const auto indexer = offender("Spotlight", 30, ProcessOffenderCategory::indexingOrSetup);
    auto byOffender = indexing(45);
    byOffender.insight.confidence = Confidence::high;
    byOffender.insight.relatedOffenderID = "id:Spotlight";
    EXPECT_EQ(recommendationCandidates(scoreOf(fair), contextWith(), readyOffenders({indexer}, true),
                                       defaults, OperatingSystem::mac),
              (Advice{indexing(45), byOffender, elevated}));
}

} // namespace

} // namespace cindertop::testing
