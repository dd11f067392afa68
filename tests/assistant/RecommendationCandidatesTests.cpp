#include "assistant/AssistantInputs.h"
#include "assistant/RecommendationCandidates.h"

#include <gtest/gtest.h>

namespace cindertop::testing {

namespace {

using enum ThermalLevel;
using enum ProcessOffenderCategory;
using Titles = std::vector<std::string>;

constexpr auto defaults = RecommendationEngineConfiguration::defaultConfiguration();

/// "Browser workload 40", most urgent first.
Titles advice(const ThermalScore& score, const SystemContextSnapshot& context,
              const ProcessOffenderSnapshot& offenders = ProcessOffenderSnapshot::empty(),
              const RecommendationEngineConfiguration& configuration = defaults) {
    Titles titles;
    for (const auto& [insight, priority] :
         recommendationCandidates(score, context, offenders, configuration)) {
        titles.push_back(insight.title + " " + std::to_string(priority));
    }
    return titles;
}

/// The advice that applies beside the level's own, without its priority.
std::string themeAdvice(const SystemContextSnapshot& context, ThermalLevel level,
                        const RecommendationEngineConfiguration& configuration = defaults) {
    const auto candidates =
        recommendationCandidates(scoreOf(level), context, ProcessOffenderSnapshot::empty(), configuration);
    return candidates.size() == 1 ? "" : candidates.front().insight.title;
}

TEST(RecommendationCandidates, TellTheLevelAndThePressure) {
    struct Case {
        ThermalScore score;
        SustainedThermalPressureSnapshot pressure;
        Titles expected;
    };

    const auto& none = SustainedThermalPressureSnapshot::inactive();
    const ThermalTrend cooling = ThermalTrend::cooling;
    for (const auto& [score, pressure, expected] : std::vector<Case>{
             {scoreOf(normal), none, {"Normal workload 90"}},
             {scoreOf(normal, cooling), none, {"Cooling down 20", "Normal workload 90"}},
             {scoreOf(normal, ThermalTrend::rising), none, {"Normal workload 90"}},
             {scoreOf(fair, cooling), none, {"Cooling down 20", "Elevated but manageable 85"}},
             {scoreOf(serious, cooling), none, {"Serious thermal pressure 70"}},
             {scoreOf(serious),
              sustained(130, serious),
              {"Sustained thermal pressure 5", "Serious thermal pressure 70"}},
             {scoreOf(critical),
              sustained(130, critical),
              {"Critical thermal pressure 0", "Critical thermal pressure 0"}},
             // the pressure's own level counts, and the score's only without one
             {scoreOf(serious), sustained(130, fair), {"Serious thermal pressure 70"}},
             {scoreOf(fair),
              sustained(130, serious),
              {"Sustained thermal pressure 5", "Elevated but manageable 85"}},
             {scoreOf(serious),
              sustained(130, std::nullopt),
              {"Sustained thermal pressure 5", "Serious thermal pressure 70"}},
             {scoreOf(fair), sustained(130, std::nullopt), {"Elevated but manageable 85"}},
         }) {
        auto context = quietContext();
        context.sustainedPressure = pressure;
        EXPECT_EQ(advice(score, context), expected);
    }
}

TEST(RecommendationCandidates, TellDisplaysAboveNormalOnly) {
    struct Case {
        DisplayContextSnapshot displays;
        std::string expected;
    };

    auto withoutContext = defaults;
    withoutContext.includeContextInsights = false;
    for (const auto& [snapshot, expected] : std::vector<Case>{
             {displays(1, 0), ""},
             {displays(0, 0), ""},
             {displays(0, 1), "Clamshell heat"},
             {displays(1, 1), "External display load"},
             {displays(1, 2), "External display load"},
             {{false, 1, 0, 1}, ""},
             {{false, 2, 1, 1}, ""},
         }) {
        auto context = quietContext();
        context.displays = snapshot;
        EXPECT_EQ(themeAdvice(context, fair), expected);
        EXPECT_EQ(themeAdvice(context, normal), "");
        EXPECT_EQ(themeAdvice(context, fair, withoutContext), "");
    }
}

TEST(RecommendationCandidates, TellChargingOnlyWhereItIsCertain) {
    struct Case {
        PowerContextSnapshot power;
        std::string expected;
    };

    using enum PowerSourceKind;
    auto withoutContext = defaults;
    withoutContext.includeContextInsights = false;
    auto unavailable = power(acPower, true);
    unavailable.isAvailable = false;
    for (const auto& [snapshot, expected] : std::vector<Case>{
             {power(acPower, true), "Charging heat"},
             {power(upsPower, true), "Charging heat"},
             {power(acPower, false), ""},
             {power(acPower, std::nullopt), ""},
             {power(batteryPower, true), ""},
             {power(offline, true), ""},
             {power(unknown, true), ""},
             {unavailable, ""},
         }) {
        auto context = quietContext();
        context.power = snapshot;
        EXPECT_EQ(themeAdvice(context, fair), expected);
        EXPECT_EQ(themeAdvice(context, normal), "");
        EXPECT_EQ(themeAdvice(context, fair, withoutContext), "");
    }
}

TEST(RecommendationCandidates, TellTheProcessesWhenTheyAreKnown) {
    struct Case {
        ThermalLevel level;
        ProcessOffenderSnapshot offenders;
        Titles expected;
    };

    const auto browser = offender("Safari", 30, browserWorkload);
    const auto indexer = offender("Spotlight", 30, indexingOrSetup);
    auto collecting = readyOffenders({browser}, true);
    collecting.state = ProcessOffenderSnapshotState::collecting;
    const std::string fairLevel = "Elevated but manageable 85";
    for (const auto& [level, offenders, expected] : std::vector<Case>{
             {fair,
              readyOffenders({browser}, true),
              {"Browser workload 40", "Background indexing 45", fairLevel}},
             {serious,
              readyOffenders({browser}, true),
              {"Browser workload 30", "Background indexing 45", "Serious thermal pressure 70"}},
             {normal, readyOffenders({browser}, true), {"Background indexing 80", "Normal workload 90"}},
             {normal, readyOffenders({browser}), {"Normal workload 90"}},
             {fair, collecting, {fairLevel}},
             {fair, readyOffenders({}), {fairLevel}},
             {fair, readyOffenders({offender("Safari", 4.9, browserWorkload), browser}), {fairLevel}},
             {fair,
              readyOffenders({offender("Safari", 5.0, browserWorkload), indexer}),
              {"Browser workload 40", fairLevel}},
         }) {
        EXPECT_EQ(advice(scoreOf(level), quietContext(), offenders), expected);
    }

    auto withoutProcesses = defaults;
    withoutProcesses.includeProcessInsights = false;
    EXPECT_EQ(advice(scoreOf(fair), quietContext(), readyOffenders({browser}, true), withoutProcesses),
              Titles{fairLevel});
}

TEST(RecommendationCandidates, GoByUrgencyThenByKindThenAsTheyWereAdded) {
    auto context = quietContext();
    context.displays = displays(0, 1);
    context.power = power(PowerSourceKind::acPower, true);
    EXPECT_EQ(advice(scoreOf(critical), context, readyOffenders({offender("Safari", 30, browserWorkload)})),
              (Titles{"Critical thermal pressure 0", "Critical thermal pressure 0", "Clamshell heat 15",
                      "Browser workload 30", "Charging heat 50"}));

    // The system's indexing and the indexing offender have one priority and one kind at a fair level.
    const auto both = readyOffenders({offender("Spotlight", 30, indexingOrSetup)}, true);
    const auto candidates = recommendationCandidates(scoreOf(fair), quietContext(), both, defaults);
    ASSERT_EQ(candidates.size(), 3U);
    EXPECT_EQ(candidates[0].insight.relatedOffenderID, std::nullopt);
    EXPECT_EQ(candidates[0].insight.confidence, CinderInsightConfidence::medium);
    EXPECT_EQ(candidates[1].insight.relatedOffenderID, "id:Spotlight");
    EXPECT_EQ(candidates[1].insight.confidence, CinderInsightConfidence::high);
}

} // namespace

} // namespace cindertop::testing
