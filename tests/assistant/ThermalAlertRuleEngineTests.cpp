#include "assistant/AssistantInputs.h"
#include "assistant/ThermalAlertRuleEngine.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <map>
#include <random>

namespace cindertop::testing {

namespace {

using enum ThermalLevel;
using Kind = ThermalAlertKind;

constexpr ThermalAlertConfiguration all(true, serious, Seconds{900}, Seconds{300}, Seconds{120});
constexpr ThermalAlertConfiguration criticalOnly(true, critical, Seconds{900}, Seconds{300}, Seconds{120});
constexpr ThermalAlertConfiguration disabled(false, serious, Seconds{900}, Seconds{300}, Seconds{120});

/// One tick: how long pressure has been sustained (absent: it is not), and which alert is expected.
struct Step {
    double seconds;
    ThermalLevel level;
    std::optional<double> sustainedFor;
    std::optional<Kind> expected;
    ThermalAlertConfiguration configuration = all;
};

ThermalAlertInput inputFor(const Step& step) {
    auto context = quietContext();
    if (step.sustainedFor) {
        context.sustainedPressure = sustained(*step.sustainedFor, step.level);
    }
    return {scoreOf(step.level), context, CinderRecommendationSnapshot::empty(), std::nullopt,
            at(step.seconds)};
}

void expectAlerts(const std::vector<Step>& steps) {
    ThermalAlertRuleEngine engine;
    for (const auto& step : steps) {
        const auto alert = engine.evaluate(inputFor(step), step.configuration);
        ASSERT_EQ(alert.has_value(), step.expected.has_value()) << "at " << step.seconds;
        if (alert) {
            EXPECT_EQ(rawValue(alert->kind), rawValue(*step.expected)) << "at " << step.seconds;
            EXPECT_EQ(alert->issuedAt, at(step.seconds));
        }
    }
}

constexpr std::nullopt_t nothing = std::nullopt;
constexpr std::nullopt_t calm = std::nullopt;

TEST(ThermalAlertRuleEngine, TellsEachEpisodeOnce) {
    expectAlerts({
        {0, serious, 120, Kind::sustainedThrottling},
        {1, serious, 121, nothing},
        {400, serious, 520, nothing},
        {401, normal, calm, Kind::recovery},
        {402, normal, calm, nothing},
    });
    // Both at once: only the worse is told, also later.
    expectAlerts({
        {0, critical, 120, Kind::critical},
        {1, critical, 121, nothing},
        {2, serious, 122, nothing},
        {500, fair, calm, Kind::recovery},
    });
    expectAlerts({
        {0, serious, 120, Kind::sustainedThrottling},
        {60, critical, 180, Kind::critical},
        {61, critical, 181, nothing},
    });
}

TEST(ThermalAlertRuleEngine, SaysWhatHasHappenedInTheTitle) {
    ThermalAlertRuleEngine engine;
    auto input = inputFor({.seconds = 0, .level = serious, .sustainedFor = 120, .expected = nothing});
    input.recommendationSnapshot = adviceOf({CinderInsightKind::topCpuOffender});
    input.topOffenderLabel = "Painter";
    EXPECT_EQ(
        engine.evaluate(input, all),
        (ThermalAlert{Kind::sustainedThrottling, "Sustained Thermal Pressure",
                      "Painter is the main CPU load right now. Pausing it briefly may help your Mac cool.",
                      at(0)}));
    EXPECT_EQ(engine.evaluate(inputFor({1, critical, 121, nothing}), all)->title,
              "Critical Thermal Pressure");
    EXPECT_EQ(engine.evaluate(inputFor({400, fair, calm, nothing}), all)->title, "Thermal Pressure Eased");
}

TEST(ThermalAlertRuleEngine, WaitsBetweenAlerts) {
    expectAlerts({
        {0, critical, calm, Kind::critical},
        {10, serious, calm, nothing},
        {899, critical, calm, nothing}, // one second early, and over
        {900, critical, calm, nothing},
        {901, fair, calm, nothing},
        {902, critical, calm, Kind::critical},
    });
    expectAlerts({
        {0, critical, calm, Kind::critical},
        {10, fair, calm, nothing},
        {900, critical, calm, Kind::critical}, // just enough
    });
    // An alert of any kind holds back all but critical ones; the easing at 200 is over at 300.
    expectAlerts({
        {0, serious, 120, Kind::sustainedThrottling},
        {200, fair, calm, nothing},
        {300, fair, calm, nothing},
        {301, critical, calm, Kind::critical},
        {302, fair, calm, nothing},
        {601, serious, 120, nothing}, // of the first one's kind
        {901, fair, calm, Kind::recovery},
        {1200, serious, 120, nothing},
        {1201, serious, 121, nothing},
    });
    expectAlerts({
        {0, serious, 300, Kind::sustainedThrottling},
        {300, fair, calm, Kind::recovery}, // just enough
        {-5, critical, calm,
         Kind::critical},         // a clock that went back holds back neither a first of its kind …
        {-4, fair, 120, nothing}, // … nor lets others through early
    });
}

TEST(ThermalAlertRuleEngine, TellsARecoveryOnlyFromALongEpisodeToALowLevel) {
    expectAlerts({
        {0, serious, 10, Kind::sustainedThrottling},
        {400, serious, 119.9, nothing},
        {401, fair, calm, nothing}, // too short
        {1000, serious, 120, Kind::sustainedThrottling},
        {1400, fair, calm, Kind::recovery},
        {2400, serious, 1, Kind::sustainedThrottling},
        {2800, normal, calm, Kind::recovery}, // the longest stretch ever counts
    });
    expectAlerts({
        {0, serious, 500, Kind::sustainedThrottling},
        {400, serious, calm, nothing},
        {401, normal, calm, nothing},
    });
    expectAlerts({
        {0, critical, 500, Kind::critical},
        {400, critical, calm, nothing},
        {401, normal, calm, nothing},
    });
}

TEST(ThermalAlertRuleEngine, TellsOnlyCriticalEpisodesWhenAskedTo) {
    expectAlerts({
        {0, serious, 120, nothing, criticalOnly},
        {400, fair, calm, nothing, criticalOnly},
        {1000, critical, 200, Kind::critical, criticalOnly},
        {1001, serious, 201, nothing, criticalOnly},
        {1400, fair, calm, Kind::recovery, criticalOnly},
        {3000, serious, 200, nothing, criticalOnly},
        {3400, fair, calm, nothing, criticalOnly}, // no critical alert since the last recovery
    });
    // A sustained alert in between forgets nothing.
    expectAlerts({
        {0, critical, calm, Kind::critical},
        {300, fair, 120, Kind::sustainedThrottling},
        {600, fair, calm, Kind::recovery, criticalOnly},
    });
}

TEST(ThermalAlertRuleEngine, FollowsTransitionsWhileDisabled) {
    expectAlerts({
        {0, serious, 120, nothing, disabled},
        {1, serious, 121, nothing},
        {2, critical, 122, nothing, disabled},
        {3, critical, 123, nothing},
        {4, fair, calm, Kind::recovery},
    });
}

TEST(ThermalAlertConfiguration, RaisesDurationsToTheirBounds) {
    const auto nan = Seconds{std::numeric_limits<double>::quiet_NaN()};
    const ThermalAlertConfiguration low(true, fair, Seconds{0}, Seconds{-5}, Seconds{0.5});
    const ThermalAlertConfiguration none(true, fair, nan, nan, nan);
    EXPECT_EQ(low, ThermalAlertConfiguration(true, fair, Seconds{1}, Seconds{0}, Seconds{1}));
    EXPECT_EQ(none, low);
}

/// What an alert of this kind may answer to.
bool isTransition(Kind kind, const Step& before, const Step& now) {
    switch (kind) {
    case Kind::critical:
        return now.level == critical && before.level != critical;
    case Kind::sustainedThrottling:
        return now.sustainedFor && !before.sustainedFor;
    case Kind::recovery:
        return before.sustainedFor && !now.sustainedFor && now.level < serious;
    }
    return false;
}

TEST(ThermalAlertRuleEngine, KeepsItsPromisesOverArbitraryTicks) {
    std::mt19937 random{7'130'213}; // NOLINT: the same ticks every time
    const auto below = [&random](unsigned bound) { return static_cast<int>(random() % bound); };
    constexpr std::array configurations{all, criticalOnly, disabled};
    ThermalAlertRuleEngine engine;
    Step before{.seconds = 0, .level = normal, .sustainedFor = calm, .expected = nothing};
    std::map<Kind, double> told;
    std::optional<double> toldLast;
    std::map<Kind, int> counts;
    for (int tick = 0; tick < 20'000; ++tick) {
        Step now{.seconds = before.seconds + below(120),
                 .level = static_cast<ThermalLevel>(below(4)),
                 .sustainedFor = below(2) == 0 ? std::optional<double>(below(400)) : calm,
                 .expected = nothing};
        const auto& configuration = configurations.at(static_cast<std::size_t>(below(3)));
        if (const auto alert = engine.evaluate(inputFor(now), configuration)) {
            const auto kind = alert->kind;
            EXPECT_TRUE(isTransition(kind, before, now)) << tick;
            EXPECT_TRUE(configuration.isEnabled) << tick;
            EXPECT_TRUE(!told.contains(kind) || now.seconds - told[kind] >= 900) << tick;
            EXPECT_TRUE(kind == Kind::critical || !toldLast || now.seconds - *toldLast >= 300) << tick;
            EXPECT_FALSE(configuration == criticalOnly && kind == Kind::sustainedThrottling) << tick;
            told[kind] = now.seconds;
            toldLast = now.seconds;
            ++counts[kind];
        }
        before = now;
    }
    EXPECT_EQ(counts.size(), 3U) << "the ticks must bring about every kind";
}

} // namespace

} // namespace cindertop::testing
