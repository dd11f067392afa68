#include "assistant/AssistantInputs.h"
#include "assistant/ThermalAlertRuleEngine.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <random>

namespace cindertop::testing {

namespace {

using enum ThermalLevel;
using ThermalAlertKind::recovery;
using ThermalAlertKind::sustainedThrottling;
constexpr auto top = ThermalAlertKind::critical;
constexpr std::nullopt_t calm = std::nullopt;

constexpr ThermalAlertConfiguration alertsFrom(ThermalLevel minimum, bool isEnabled = true) {
    return {isEnabled, minimum, Seconds{900}, Seconds{300}, Seconds{120}};
}

constexpr auto all = alertsFrom(serious);
constexpr auto criticalOnly = alertsFrom(critical);
constexpr auto disabled = alertsFrom(serious, false);

using Duration = std::optional<double>;
using Expected = std::optional<ThermalAlertKind>;

/// One tick: how long pressure has been sustained (absent: it is not), and which alert is expected.
struct Step {
    double seconds;
    ThermalLevel level;
    Duration sustainedFor;
    Expected expected;
    ThermalAlertConfiguration configuration = all;

    Step under(const ThermalAlertConfiguration& other) const {
        return {seconds, level, sustainedFor, expected, other};
    }
};

Step peak(double seconds, Duration sustainedFor, Expected expected = std::nullopt) {
    return {seconds, critical, sustainedFor, expected};
}

Step hot(double seconds, Duration sustainedFor, Expected expected = std::nullopt) {
    return {seconds, serious, sustainedFor, expected};
}

Step warm(double seconds, Duration sustainedFor, Expected expected = std::nullopt) {
    return {seconds, fair, sustainedFor, expected};
}

ThermalAlertInput inputFor(const Step& step) {
    const auto context =
        step.sustainedFor ? contextWith(sustained(*step.sustainedFor, step.level)) : contextWith();
    return {scoreOf(step.level), context, adviceOf({CinderInsightKind::topCpuOffender}), "Painter",
            at(step.seconds)};
}

/// The whole alert of a kind under these circumstances.
ThermalAlert alertOf(ThermalAlertKind kind, double seconds) {
    const auto title = kind == top        ? "Critical Thermal Pressure"
                       : kind == recovery ? "Thermal Pressure Eased"
                                          : "Sustained Thermal Pressure";
    const auto body =
        kind == recovery
            ? "Your Mac is back below serious thermal pressure. Performance should feel steadier again."
            : "Painter is the main CPU load right now. Pausing it briefly may help your Mac cool.";
    return {kind, title, body, at(seconds)};
}

TEST(ThermalAlertRuleEngine, TellsEachTransitionOnce) {
    constexpr auto lasting = sustainedThrottling;
    const std::map<std::string, std::vector<Step>> episodes{
        {"each once",
         {hot(0, 120, lasting), hot(1, 121), hot(400, 520), warm(401, calm, recovery), warm(402, calm)}},
        {"of two at once only the worse, also later",
         {peak(0, 120, top), peak(1, 121), hot(2, 122), warm(500, calm, recovery)}},
        {"a critical one waits for no other kind", {hot(0, 120, lasting), peak(60, 180, top), peak(61, 181)}},
        {"a second early, and it is over",
         {peak(0, calm, top), hot(10, calm), peak(899, calm), peak(900, calm), hot(901, calm),
          peak(902, calm, top)}},
        {"just in time", {peak(0, calm, top), warm(10, calm), peak(900, calm, top)}},
        {"an easing that another alert holds back is over",
         {hot(0, 120, lasting), warm(200, calm), warm(300, calm), peak(301, calm, top)}},
        {"a second one of its kind waits longer than for others",
         {hot(0, 120, lasting), warm(300, calm, recovery), hot(899, 120), warm(1200, calm, recovery)}},
        {"a clock that went back holds back no first of its kind, and lets no other through early",
         {hot(0, 300, lasting), warm(300, calm, recovery), peak(-5, calm, top), warm(-4, 120)}},
        {"too short an episode", {hot(0, 10, lasting), hot(400, 119.9), warm(401, calm)}},
        {"the longest episode ever counts",
         {hot(0, 120, lasting), warm(300, calm, recovery), hot(1200, 1, lasting),
          warm(1500, calm, recovery)}},
        {"the tick that turns critical counts for it",
         {peak(0, 150, top), peak(1, 10), warm(400, calm, recovery)}},
        {"and shortens nothing", {hot(0, 150, lasting), peak(300, 10, top), warm(600, calm, recovery)}},
        {"no recovery to a serious level, now or later",
         {hot(0, 500, lasting), hot(400, calm), warm(401, calm)}},
        {"nor to a critical one", {peak(0, 500, top), peak(400, calm), warm(401, calm)}},
        {"critical episodes only: no other, and one recovery from each",
         {hot(0, 120).under(criticalOnly), warm(400, calm).under(criticalOnly),
          peak(1000, 200, top).under(criticalOnly), hot(1001, 201).under(criticalOnly),
          warm(1400, calm, recovery).under(criticalOnly), hot(3000, 200).under(criticalOnly),
          warm(3400, calm).under(criticalOnly)}},
        {"a sustained alert in between forgets no critical one",
         {peak(0, calm, top), warm(300, 120, lasting), warm(600, calm, recovery).under(criticalOnly)}},
        {"what happens while disabled is over",
         {hot(0, 120).under(disabled), hot(1, 121), peak(2, 122).under(disabled), peak(3, 123),
          warm(4, calm, recovery)}},
        {"a minimum below serious is as good as serious",
         {warm(0, 120, lasting).under(alertsFrom(normal)), peak(10, 130, top).under(alertsFrom(fair)),
          warm(400, calm, recovery).under(alertsFrom(normal))}},
    };
    for (const auto& [name, steps] : episodes) {
        ThermalAlertRuleEngine engine(OperatingSystem::mac);
        for (const auto& step : steps) {
            const auto expected =
                step.expected.transform([&](auto kind) { return alertOf(kind, step.seconds); });
            EXPECT_EQ(engine.evaluate(inputFor(step), step.configuration), expected)
                << name << ", at " << step.seconds;
        }
    }
}

TEST(ThermalAlertRuleEngine, TellsNothingOfTheHeatThatASleepTookOrKept) {
    constexpr auto lasting = sustainedThrottling;
    /// The machine sleeps before the third step.
    const std::map<std::string, std::vector<Step>> nights{
        {"gone",
         {hot(0, 120, lasting), hot(1, 300), warm(2000, calm), hot(2001, calm), hot(2121, 120, lasting)}},
        {"kept",
         {hot(0, 120, lasting), hot(1, 300), hot(2000, calm), hot(2120, 120), warm(2300, calm, recovery)}},
        {"kept, but not for long", {hot(0, 120, lasting), hot(1, 300), hot(2000, calm), warm(2001, calm)}},
        {"kept and worse", {hot(0, 120, lasting), hot(1, 300), peak(2000, calm, top)}},
        {"kept at its worst", {peak(0, calm, top), peak(1, 300), peak(2000, calm), peak(2001, 120)}},
        {"come", {warm(0, calm), warm(1, calm), hot(2000, calm), hot(2120, 120, lasting)}},
        {"of which the critical one was told, gone: the next one's end is none of its",
         {peak(0, 120, top), peak(1, 121), warm(2000, calm).under(criticalOnly),
          hot(3000, 120).under(criticalOnly), warm(4000, calm).under(criticalOnly)}},
    };
    for (const auto& [name, steps] : nights) {
        ThermalAlertRuleEngine engine(OperatingSystem::mac);
        for (std::size_t index = 0; index < steps.size(); ++index) {
            const auto& step = steps[index];
            if (index == 2) {
                engine.noteSleep();
            }
            const auto alert = engine.evaluate(inputFor(step), step.configuration);
            EXPECT_EQ(alert ? Expected(alert->kind) : calm, step.expected) << name << ", at " << step.seconds;
        }
    }
}

TEST(ThermalAlertRuleEngine, BeginsCooldownsAgainWhenTheClockIsSetBack) {
    ThermalAlertRuleEngine engine(OperatingSystem::mac);
    const auto kindAt = [&engine](const Step& step) {
        const auto alert = engine.evaluate(inputFor(step), all);
        return alert ? Expected(alert->kind) : calm;
    };
    EXPECT_EQ(kindAt(peak(100'000, calm)), top);
    EXPECT_EQ(kindAt(warm(0, calm)), std::nullopt) << "set back";
    EXPECT_EQ(kindAt(peak(899, calm)), std::nullopt);
    EXPECT_EQ(kindAt(warm(900, calm)), std::nullopt);
    EXPECT_EQ(kindAt(peak(901, calm)), top);
}

TEST(ThermalAlertConfiguration, RaisesDurationsToTheirBounds) {
    const Seconds nan{std::nan("")};
    const ThermalAlertConfiguration lowest(true, fair, Seconds{1}, Seconds{0}, Seconds{1});
    EXPECT_EQ(ThermalAlertConfiguration(true, fair, Seconds{0}, Seconds{-5}, Seconds{0.5}), lowest);
    EXPECT_EQ(ThermalAlertConfiguration(true, fair, nan, nan, nan), lowest);
    EXPECT_EQ(lowest.eventCooldown, Seconds{1});
    EXPECT_EQ(lowest.globalCooldown, Seconds{0});
}

} // namespace

} // namespace cindertop::testing
