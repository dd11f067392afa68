#include "app/FakeProgram.h"
#include "ui/presentation/PopoverPresentation.h"

#include <gtest/gtest.h>

#include <QStringList>

namespace cindertop::ui {
namespace {

using namespace std::chrono_literals;

/// The popover of a fake program; what its buttons ask for is written down.
class PopoverPresentationTest : public testing::Test, public Windows {
protected:
    FakeProgram program;
    AppState* state = nullptr;
    std::unique_ptr<PopoverPresentation> popover;
    QStringList asked;

    PopoverPresentationTest() { program.windows = this; }

    void showOnboarding() override { asked += "onboarding"; }

    void closeOnboarding() override {}

    void showSettings() override { asked += "settings"; }

    void open(const AppSettingsFields& settings = {}) {
        state = &program.startWith(settings);
        const auto asks = [this](const char* what) { return [this, what] { asked += what; }; };
        popover = std::make_unique<PopoverPresentation>(*state, ProgramActions{.openHelp = asks("help"),
                                                                               .openTerms = {},
                                                                               .openPrivacyPolicy = {},
                                                                               .openWebsite = {},
                                                                               .closePopover = asks("close"),
                                                                               .quit = asks("quit")});
    }

    void setTemperature(double celsius) {
        program.machine.temperatureEvents.sensors = {{.product = "PMU tdie1", .celsius = celsius}};
    }

    QStringList summary() const {
        return {popover->contents().symbolName, popover->contents().statusText, popover->detailText()};
    }

    QStringList toggle() const {
        return {popover->contents().toggleTitle, popover->contents().toggleSymbolName};
    }

    QStringList offender() const {
        return {popover->contents().offenderName, popover->contents().offenderPercentText};
    }
};

TEST_F(PopoverPresentationTest, FollowsTheMachineWhileOpen) {
    setTemperature(47);
    open({.experimentalTemperatureSensorsEnabled = true});
    EXPECT_EQ(popover->contents().statusText, "Normal");
    program.pass(0s);
    EXPECT_EQ(popover->contents().temperatureText, "SoC 47°C");

    for (const auto& [pressure, level, expected] :
         {std::tuple(1U, 1, QStringList{"flame", "Fair"}),
          std::tuple(2U, 2, QStringList{"speedometer", "Serious"}),
          std::tuple(3U, 3, QStringList{"exclamationmark.octagon", "Critical"})}) {
        program.machine.pressure->play({pressure});
        setTemperature(60 + 12.0 * level);
        program.pass(30s);
        EXPECT_EQ(popover->contents().level, level);
        EXPECT_EQ(summary().mid(0, 2), expected);
    }
    EXPECT_FALSE(popover->contents().tipMessage.isEmpty());
    EXPECT_EQ(popover->contents().trendLabel, ""); // the tip says more
}

TEST_F(PopoverPresentationTest, SaysInAWindowThatThePanelShowsNoItem) {
    open();
    popover->setHasStatusItem(false);
    EXPECT_EQ(popover->note(), "") << "a popover is gone when the user looks elsewhere";
    popover->setIsWindow(true);
    EXPECT_TRUE(popover->note().startsWith("This desktop's panel shows no status items."));
    popover->setHasStatusItem(true);
    EXPECT_EQ(popover->note(), "");
}

TEST_F(PopoverPresentationTest, TellsTheScoreInAWindowOnceItIsMeasured) {
    open();
    popover->setIsWindow(true);
    EXPECT_EQ(popover->detailText(), "");
    program.machine.pressure->play({2U});
    program.pass(30s);
    EXPECT_TRUE(popover->detailText().startsWith("Score ")) << popover->detailText().toStdString();
    EXPECT_NE(popover->detailText(), "Score 0");
    popover->setIsWindow(false);
    EXPECT_FALSE(popover->detailText().contains("Score"));
}

TEST_F(PopoverPresentationTest, JoinsTheTemperatureAndTheTrend) {
    setTemperature(40);
    open({.experimentalTemperatureSensorsEnabled = true, .showContextInsights = false});
    program.pass(10s);
    EXPECT_EQ(summary(), (QStringList{"checkmark.circle", "Normal", "SoC 40°C"}));
    state->set(&AppSettingsFields::experimentalTemperatureSensorsEnabled, false);
    EXPECT_EQ(popover->detailText(), "");
}

TEST_F(PopoverPresentationTest, PausesAndResumes) {
    open();
    program.pass(0s);
    EXPECT_EQ(toggle(), (QStringList{"Disable Monitoring", "pause.fill"}));

    popover->toggleMonitoring();
    EXPECT_TRUE(*state->published().isPaused);
    EXPECT_EQ(toggle(), (QStringList{"Enable Monitoring", "play.fill"}));
    EXPECT_EQ(summary(), (QStringList{"pause.fill", "Paused", ""}));
    EXPECT_EQ(popover->contents().level, 4);
    EXPECT_EQ(popover->contents().tipMessage, "Monitoring paused.");

    popover->toggleMonitoring();
    EXPECT_FALSE(*state->published().isPaused);
    EXPECT_EQ(popover->contents().statusText, "Normal");
    EXPECT_TRUE(asked.empty());
}

TEST_F(PopoverPresentationTest, NamesTheTopOffenderWhereThereIsOneToShow) {
    program.machine.processes.processes.clear();
    auto& busy = program.machine.processes.add(7, "Größe & Co");
    open();
    program.pass(0s);
    EXPECT_TRUE(popover->contents().offenderName.isEmpty()); // nothing yet to compare with

    for (int second = 0; second < 60; ++second) {
        busy.accounting->totalUserTime += 2'520'000'000; // of 8 processors
        program.pass(1s);
    }
    EXPECT_EQ(offender(), (QStringList{"Größe & Co", "32%"}));
    EXPECT_EQ(popover->contents().offenderIconSource, "image://application//Gr%C3%B6%C3%9Fe%20%26%20Co");

    state->set(&AppSettingsFields::showProcessOffenders, false);
    EXPECT_TRUE(popover->contents().offenderName.isEmpty());
    state->set(&AppSettingsFields::showProcessOffenders, true);
    state->setPaused(true);
    EXPECT_TRUE(popover->contents().offenderName.isEmpty());
}

TEST_F(PopoverPresentationTest, AsksForTheTermsBeforeAnythingIsMeasured) {
    program.defaults = {};
    open();
    program.pass(10s);
    EXPECT_EQ(summary(), (QStringList{"pause.fill", "Not monitoring", ""}));
    EXPECT_EQ(popover->contents().level, 5);
    EXPECT_EQ(
        popover->contents().tipMessage,
        "Before you accept the terms of use, nothing is watched in the background and nothing is kept.");
    EXPECT_EQ(toggle(), (QStringList{"Set Up Cindertop...", "play.fill"}));

    popover->toggleMonitoring();
    EXPECT_EQ(asked, (QStringList{"onboarding", "close"}));
    state->acceptLegalTerms();
    EXPECT_EQ(popover->contents().statusText, "Normal");
    EXPECT_EQ(toggle(), (QStringList{"Disable Monitoring", "pause.fill"}));
}

TEST_F(PopoverPresentationTest, NeedsNoHeatToRankApplications) {
    program.machine.operatingSystem = OperatingSystem::gnuLinux;
    program.machine.process.state = 9;
    program.machine.pressure->registrationStatus = 1;
    program.machine.processes.processes.clear();
    auto& busy = program.machine.processes.add(7, "busy");
    open();
    EXPECT_EQ(summary(), (QStringList{"timer", "Measuring", ""}));
    EXPECT_EQ(toggle(), (QStringList{"Pause Monitoring", "pause.fill"}));
    for (int second = 0; second < 20; ++second) {
        busy.accounting->totalUserTime += 4'000'000'000; // of 8 processors
        program.pass(1s);
    }
    EXPECT_EQ(summary(), (QStringList{"questionmark.circle", "No heat readings", ""}));
    EXPECT_EQ(offender(), (QStringList{"busy", "50%"}));
    state->setPaused(true);
    EXPECT_EQ(toggle(), (QStringList{"Resume Monitoring", "play.fill"}));
}

TEST_F(PopoverPresentationTest, AddsSecondaryInsightsForThoseWhoWantThem) {
    program.machine.pressure->play({2});
    program.machine.displays =
        fakes::FakeDisplayList({{.identifier = 9, .place = DisplayPlace::external}}); // the lid is closed
    open({.recommendationVerbosity = RecommendationVerbosity::detailed});
    program.pass(1s);
    const auto& others = program.published().recommendationSnapshot->secondaryInsights;
    ASSERT_FALSE(others.empty());
    EXPECT_EQ(popover->contents().secondaryInsightTitles.front().toStdString(), others.front().title);
    EXPECT_EQ(popover->contents().secondaryInsightMessages.front().toStdString(), others.front().message);
    state->set(&AppSettingsFields::recommendationVerbosity, RecommendationVerbosity::concise);
    EXPECT_TRUE(popover->contents().secondaryInsightTitles.empty());
    state->set(&AppSettingsFields::recommendationVerbosity, RecommendationVerbosity::detailed);
    state->setPaused(true);
    EXPECT_TRUE(popover->contents().secondaryInsightTitles.empty());
}

TEST_F(PopoverPresentationTest, ClosesAfterWhatOpensSomethingElse) {
    open();
    popover->openHelp();
    popover->openPreferences();
    EXPECT_EQ(asked, (QStringList{"help", "close", "settings", "close"}));
    asked.clear();
    popover->checkForUpdates();
    EXPECT_TRUE(asked.empty());
    EXPECT_EQ(program.countOf("Update check opened releases page because Sparkle is not configured"), 1);
    popover->quit();
    EXPECT_EQ(asked, QStringList("quit"));
}

TEST_F(PopoverPresentationTest, IsStillWhereThePowerIsToLast) {
    open();
    program.machine.process.lowPowerMode = true;
    program.pass(10s);
    EXPECT_TRUE(popover->contents().savesPower);
}

} // namespace
} // namespace cindertop::ui
