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

} // namespace

} // namespace cindertop::testing
