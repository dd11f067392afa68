#include "assistant/AssistantInputs.h"
#include "assistant/RecommendationCandidates.h"
#include "assistant/RecommendationEngine.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace cindertop::testing {

namespace {

using enum ThermalLevel;
using enum ProcessOffenderCategory;

/// An engine at a fair level that is fed one circumstance after another; each answer is the headline's title,
/// and what the offender in it is.
class Advisor {
public:
    explicit Advisor(int confirmationCount = 2) : configuration_(confirmationCount, 2, true, true) {}

    std::string lead(const std::string& name, ProcessOffenderCategory category) {
        return update(fair, contextWith(), readyOffenders({offender(name, 30, category)}));
    }

    std::string see(const DisplayContextSnapshot& displays) { return update(fair, contextWith(displays)); }

    std::string be(ThermalLevel level, const SustainedThermalPressureSnapshot& pressure) {
        return update(level, contextWith(pressure));
    }

    void reset() { engine_.reset(); }

    CinderRecommendationSnapshot last;

private:
    std::string update(ThermalLevel level, const SystemContextSnapshot& context,
                       const ProcessOffenderSnapshot& offenders = ProcessOffenderSnapshot::empty()) {
        last = engine_.update(scoreOf(level), context, offenders, configuration_, at(++ticks_));
        EXPECT_EQ(last.measuredAt, at(ticks_));
        const auto& headline = last.primaryInsight;
        return headline ? headline->relatedOffenderID.value_or(headline->title) : "nothing";
    }

    RecommendationEngine engine_{OperatingSystem::mac};
    RecommendationEngineConfiguration configuration_;
    int ticks_{0};
};

TEST(RecommendationEngine, KeepsTheHeadlineUntilAnotherKindIsConfirmed) {
    Advisor advisor;
    EXPECT_EQ(advisor.lead("Safari", browserWorkload), "id:Safari");
    const auto first = advisor.last.primaryInsight;
    EXPECT_EQ(advisor.lead("Xcode", developerWorkload), "id:Safari");
    EXPECT_EQ(advisor.last.primaryInsight, first);
    ASSERT_EQ(advisor.last.secondaryInsights.size(), 2U);
    EXPECT_EQ(advisor.last.secondaryInsights[0].relatedOffenderID, "id:Xcode");
    EXPECT_EQ(advisor.last.secondaryInsights[1].title, "Elevated but manageable");
    EXPECT_EQ(advisor.lead("Xcode", developerWorkload), "id:Xcode");

    for (const int count : {-1, 1, 2, 15}) { // a closed lid is not urgent either
        Advisor patient(count);
        EXPECT_EQ(patient.see(displays(1, 1)), "External display load");
        for (int tick = 1; tick < count; ++tick) {
            EXPECT_EQ(patient.see(displays(0, 1)), "External display load") << tick << " of " << count;
            EXPECT_EQ(patient.last.secondaryInsights.front().title, "Clamshell heat");
        }
        EXPECT_EQ(patient.see(displays(0, 1)), "Clamshell heat") << count;
    }
}

TEST(RecommendationEngineConfiguration, BringsCountsIntoTheirRanges) {
    using Configuration = RecommendationEngineConfiguration;
    EXPECT_EQ(Configuration(2, 5, true, true), Configuration::defaultConfiguration());
    EXPECT_EQ(Configuration(0, -1, false, true), Configuration(1, 0, false, true));
}

TEST(RecommendationEngine, StartsCountingAgainWhenTheLeadChanges) {
    Advisor advisor(3);
    advisor.lead("Safari", browserWorkload);
    advisor.lead("Xcode", developerWorkload);
    advisor.lead("Xcode", developerWorkload);
    EXPECT_EQ(advisor.lead("Painter", userApplication), "id:Safari"); // a third kind begins at one
    EXPECT_EQ(advisor.lead("Xcode", developerWorkload), "id:Safari");
    EXPECT_EQ(advisor.lead("Xcode", developerWorkload), "id:Safari");
    EXPECT_EQ(advisor.lead("Firefox", browserWorkload), "id:Firefox"); // the old kind, freshly worded
    EXPECT_EQ(advisor.lead("Xcode", developerWorkload), "id:Firefox");
    EXPECT_EQ(advisor.lead("Xcode", developerWorkload), "id:Firefox");
    EXPECT_EQ(advisor.lead("Clang", developerWorkload), "id:Clang"); // kinds are confirmed, not names
}

TEST(RecommendationEngine, LetsUrgentAdviceAndAFreshStartLeadAtOnce) {
    const auto none = SustainedThermalPressureSnapshot::inactive();
    Advisor advisor(15);
    advisor.lead("Safari", browserWorkload);
    EXPECT_EQ(advisor.be(serious, sustained(150, serious)), "Sustained thermal pressure");
    EXPECT_TRUE(advisor.last.secondaryInsights.empty()); // that of the level alone is of the same kind
    advisor.reset();
    EXPECT_EQ(advisor.lead("Safari", browserWorkload), "id:Safari");
    EXPECT_EQ(advisor.be(serious, none), "id:Safari"); // pressure that has not lasted yet must wait

    Advisor interrupted;
    interrupted.lead("Safari", browserWorkload);
    interrupted.lead("Xcode", developerWorkload);
    EXPECT_EQ(interrupted.be(critical, none), "Critical thermal pressure");
    EXPECT_TRUE(interrupted.last.secondaryInsights.empty());
    EXPECT_EQ(interrupted.lead("Xcode", developerWorkload), "Critical thermal pressure"); // pending forgotten
    interrupted.reset();
    EXPECT_EQ(interrupted.lead("Safari", browserWorkload), "id:Safari");
    EXPECT_EQ(interrupted.lead("Xcode", developerWorkload), "id:Safari"); // here, too
}

TEST(RecommendationEngine, KeepsItsPromisesOverArbitraryTicks) {
    std::mt19937 random{20'240'713}; // NOLINT: the same ticks every time
    const auto below = [&random](unsigned bound) { return static_cast<int>(random() % bound); };
    RecommendationEngine engine(OperatingSystem::mac);
    std::optional<CinderInsight> shown;
    std::optional<CinderInsightKind> ledBefore;
    for (int tick = 0; tick < 20'000; ++tick) {
        const auto level = static_cast<ThermalLevel>(below(4));
        const auto score = scoreOf(level, static_cast<ThermalTrend>(below(3)));
        const auto context =
            contextWith(displays(below(2), below(2)), power(PowerSourceKind::acPower, below(2) == 1),
                        below(4) == 0 ? sustained(150, level) : SustainedThermalPressureSnapshot::inactive());
        const auto category = static_cast<ProcessOffenderCategory>(below(7));
        const auto offenders = readyOffenders({offender("App", below(12), category)}, below(3) == 0);
        const RecommendationEngineConfiguration configuration(2, below(8) - 2, below(8) != 0, below(8) != 0);
        auto candidates =
            recommendationCandidates(score, context, offenders, configuration, OperatingSystem::mac);
        const auto top = candidates.front();
        const auto [primary, secondaries, measuredAt] =
            engine.update(score, context, offenders, configuration, at(tick));
        ASSERT_TRUE(primary);
        if (primary == top.insight) {
            EXPECT_TRUE(!shown || shown->kind == primary->kind || top.priority < 11 ||
                        ledBefore == primary->kind)
                << "unconfirmed at " << tick;
        } else {
            EXPECT_EQ(primary, shown) << tick;
            EXPECT_GE(top.priority, 11) << "urgent advice waits at " << tick;
            EXPECT_NE(ledBefore, top.insight.kind) << "confirmed advice waits at " << tick;
        }
        std::erase_if(candidates, [&](const auto& each) { return each.insight.kind == primary->kind; });
        candidates.resize(
            std::min(candidates.size(), static_cast<std::size_t>(configuration.maximumSecondaryInsightCount)),
            top);
        EXPECT_TRUE(std::ranges::equal(secondaries, candidates, {}, {}, &RecommendationCandidate::insight))
            << tick;
        EXPECT_LE(secondaries.size(), 2U);
        shown = primary;
        ledBefore = top.insight.kind;
    }
}

} // namespace

} // namespace cindertop::testing
