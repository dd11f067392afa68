#include "assistant/AssistantInputs.h"
#include "assistant/RecommendationCandidates.h"
#include "assistant/RecommendationEngine.h"

#include <gtest/gtest.h>

#include <random>

namespace cindertop::testing {

namespace {

using enum ThermalLevel;
using enum ProcessOffenderCategory;

constexpr auto defaults = RecommendationEngineConfiguration::defaultConfiguration();

/// An engine that is fed one busy offender after another.
class Advisor {
public:
    explicit Advisor(int confirmationCount = 2, ThermalLevel level = fair)
        : configuration_(confirmationCount, 2, true, true), level_(level) {}

    CinderRecommendationSnapshot lead(const std::string& name, ProcessOffenderCategory category) {
        return engine_.update(scoreOf(level_), quietContext(), readyOffenders({offender(name, 30, category)}),
                              configuration_, at(++ticks_));
    }

    CinderRecommendationSnapshot beCritical() {
        return engine_.update(scoreOf(critical), quietContext(), ProcessOffenderSnapshot::empty(),
                              configuration_, at(++ticks_));
    }

    void reset() { engine_.reset(); }

private:
    RecommendationEngine engine_;
    RecommendationEngineConfiguration configuration_;
    ThermalLevel level_;
    int ticks_{0};
};

std::string leader(const CinderRecommendationSnapshot& snapshot) {
    return snapshot.primaryInsight ? snapshot.primaryInsight->relatedOffenderID.value_or("none") : "absent";
}

TEST(RecommendationEngine, KeepsTheHeadlineUntilAnotherKindIsConfirmed) {
    Advisor advisor;
    const auto first = advisor.lead("Safari", browserWorkload);
    EXPECT_EQ(leader(first), "id:Safari");

    const auto pending = advisor.lead("Xcode", developerWorkload);
    EXPECT_EQ(pending.primaryInsight, first.primaryInsight);
    ASSERT_FALSE(pending.secondaryInsights.empty());
    EXPECT_EQ(pending.secondaryInsights.front().relatedOffenderID, "id:Xcode");
    EXPECT_EQ(pending.measuredAt, at(2));

    EXPECT_EQ(leader(advisor.lead("Xcode", developerWorkload)), "id:Xcode");
}

TEST(RecommendationEngine, StartsCountingAgainWhenTheLeadChanges) {
    Advisor advisor(3);
    advisor.lead("Safari", browserWorkload);
    advisor.lead("Xcode", developerWorkload);
    advisor.lead("Xcode", developerWorkload);
    EXPECT_EQ(leader(advisor.lead("Painter", userApplication)), "id:Safari"); // a third kind begins at one
    EXPECT_EQ(leader(advisor.lead("Xcode", developerWorkload)), "id:Safari");
    EXPECT_EQ(leader(advisor.lead("Xcode", developerWorkload)), "id:Safari");
    EXPECT_EQ(leader(advisor.lead("Firefox", browserWorkload)), "id:Firefox"); // the old kind, freshly worded
    EXPECT_EQ(leader(advisor.lead("Xcode", developerWorkload)), "id:Firefox");
    EXPECT_EQ(leader(advisor.lead("Xcode", developerWorkload)), "id:Firefox");
    EXPECT_EQ(leader(advisor.lead("Clang", developerWorkload)), "id:Clang"); // kinds are confirmed, not names
}

TEST(RecommendationEngine, LetsUrgentAdviceAndAFreshStartLeadAtOnce) {
    Advisor advisor;
    advisor.lead("Safari", browserWorkload);
    advisor.lead("Xcode", developerWorkload);
    const auto urgent = advisor.beCritical();
    EXPECT_EQ(urgent.primaryInsight->title, "Critical thermal pressure");
    EXPECT_TRUE(urgent.secondaryInsights.empty());
    EXPECT_EQ(leader(advisor.lead("Xcode", developerWorkload)), "none"); // what was pending is forgotten

    advisor.reset();
    EXPECT_EQ(leader(advisor.lead("Safari", browserWorkload)), "id:Safari");
    advisor.lead("Xcode", developerWorkload);
    advisor.reset();
    EXPECT_EQ(leader(advisor.lead("Safari", browserWorkload)), "id:Safari");
    EXPECT_EQ(leader(advisor.lead("Xcode", developerWorkload)), "id:Safari");

    Advisor hasty(1);
    hasty.lead("Safari", browserWorkload);
    EXPECT_EQ(leader(hasty.lead("Xcode", developerWorkload)), "id:Xcode");
}

TEST(RecommendationEngine, ListsNoSecondAdviceOfTheSameKind) {
    auto context = quietContext();
    context.sustainedPressure = sustained(150, serious);
    const auto snapshot = RecommendationEngine().update(scoreOf(serious), context,
                                                        ProcessOffenderSnapshot::empty(), defaults, at(1));
    EXPECT_EQ(snapshot.primaryInsight->title, "Sustained thermal pressure");
    EXPECT_TRUE(snapshot.secondaryInsights.empty());
}

TEST(RecommendationEngine, ListsAsManySecondariesAsAllowed) {
    auto context = quietContext();
    context.displays = displays(0, 1);
    context.power = power(PowerSourceKind::acPower, true);
    const auto busy = readyOffenders({offender("Safari", 30, browserWorkload)}, true);
    for (const auto& [allowed, expected] : {std::pair{5, 2U}, {2, 2U}, {1, 1U}, {0, 0U}, {-3, 0U}}) {
        const RecommendationEngineConfiguration configuration(0, allowed, true, true);
        const auto snapshot =
            RecommendationEngine().update(scoreOf(fair), context, busy, configuration, at(1));
        EXPECT_EQ(snapshot.secondaryInsights.size(), expected) << allowed;
        EXPECT_EQ(configuration.primaryInsightConfirmationCount, 1);
    }
}

/// One arbitrary tick.
struct Tick {
    ThermalScore score;
    SystemContextSnapshot context;
    ProcessOffenderSnapshot offenders;
};

class TickSource {
public:
    Tick next() {
        auto context = quietContext();
        context.displays = displays(below(2), below(2));
        context.power = power(PowerSourceKind::acPower, below(2) == 1);
        const auto level = static_cast<ThermalLevel>(below(4));
        if (below(4) == 0) {
            context.sustainedPressure = sustained(150, level);
        }
        const auto category = static_cast<ProcessOffenderCategory>(below(7));
        return {scoreOf(level, static_cast<ThermalTrend>(below(3))), context,
                readyOffenders({offender("App", below(12), category)}, below(3) == 0)};
    }

private:
    int below(int bound) { return static_cast<int>(random_() % static_cast<unsigned>(bound)); }

    std::mt19937 random_{20'240'713}; // NOLINT: the same ticks every time
};

TEST(RecommendationEngine, KeepsItsPromisesOverArbitraryTicks) {
    TickSource source;
    RecommendationEngine engine;
    std::optional<CinderInsightKind> shown;
    std::optional<CinderInsightKind> ledBefore;
    for (int tick = 0; tick < 5'000; ++tick) {
        const auto [score, context, offenders] = source.next();
        const auto top = recommendationCandidates(score, context, offenders, defaults).front();
        const auto snapshot = engine.update(score, context, offenders, defaults, at(tick));

        ASSERT_TRUE(snapshot.primaryInsight);
        const auto primary = snapshot.primaryInsight->kind;
        EXPECT_LE(snapshot.secondaryInsights.size(), 2U);
        for (const auto& secondary : snapshot.secondaryInsights) {
            EXPECT_NE(secondary.kind, primary) << tick;
        }
        if (shown && primary != *shown) {
            EXPECT_EQ(primary, top.insight.kind) << tick;
            EXPECT_TRUE(top.priority < 11 || ledBefore == primary) << tick;
        }
        if (score.level == critical) {
            EXPECT_EQ(snapshot.primaryInsight->title, "Critical thermal pressure") << tick;
        }
        shown = primary;
        ledBefore = top.insight.kind;
    }
}

} // namespace

} // namespace cindertop::testing
