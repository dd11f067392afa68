#include "app/FakeProgram.h"
#include "ui/presentation/SettingsPresentation.h"

#include <gtest/gtest.h>

namespace cindertop::ui {
namespace {

using namespace std::chrono_literals;

class SettingsPresentationTest : public testing::Test {
protected:
    FakeProgram program;
    AppState* state = nullptr;
    std::unique_ptr<SettingsPresentation> settings;

    SystemPresentation& open(const AppSettingsFields& stored = {}) {
        state = &program.startWith(stored);
        settings = std::make_unique<SettingsPresentation>(*state, ProgramActions{});
        return *settings->system();
    }
};

TEST_F(SettingsPresentationTest, OffersTheTemperatureOnlyWithSensors) {
    auto& system = open();
    EXPECT_EQ(system.modeLabels(), (QStringList{"Icon Only", "Thermal Status"}));
    system.set("menuBarInfoMode", 1);
    for (const int missing : {-1, 2}) {
        system.set("menuBarInfoMode", missing);
        EXPECT_EQ(state->published().settings->menuBarInfoMode, MenuBarInfoMode::thermalStatus);
    }

    system.set("experimentalTemperatureSensorsEnabled", true);
    EXPECT_EQ(system.modeLabels(), (QStringList{"Icon Only", "Thermal Status", "Temperature"}));
    EXPECT_EQ(system.modeSymbolNames(), (QStringList{"flame", "speedometer", "thermometer.medium"}));
    EXPECT_EQ(system.preferences()["menuBarInfoMode"], 1);
    system.set("menuBarInfoMode", 2);
    system.set("experimentalTemperatureSensorsEnabled", false);
    EXPECT_EQ(system.preferences()["menuBarInfoMode"], 0);
}

TEST_F(SettingsPresentationTest, SaysWhyThereAreNoNotifications) {
    program.notificationCenter.status = NotificationAuthorizationStatus::notDetermined;
    program.notificationCenter.answer = NotificationPermission::refused;
    auto& system = open();
    EXPECT_EQ(system.notificationsDetail(), "");
    system.set("notificationsEnabled", true);
    program.executor.runTasks();
    EXPECT_EQ(program.notificationCenter.prompts.size(), 1);
    EXPECT_EQ(system.notificationsDetail(),
              "Permission denied. Allow Cindertop notifications in System Settings > Notifications.");
    system.set("notificationsEnabled", false);
    program.executor.runTasks();
    EXPECT_EQ(system.notificationsDetail(), "");
}

TEST_F(SettingsPresentationTest, AnswersAreGivenOnceAndCancelDoesNothing) {
    auto& system = open({.showDockIcon = true});
    system.resetToDefaults();
    ASSERT_TRUE(settings->hasConfirmation());
    EXPECT_EQ(settings->confirmationTitle(), "Reset Preferences?");
    EXPECT_EQ(settings->confirmationMessage(),
              "This will restore Cindertop preferences and Launch at Login to defaults.");
    EXPECT_EQ(settings->confirmTitle(), "Reset Preferences");
    EXPECT_EQ(settings->cancelTitle(), "Cancel");
    settings->cancel();
    EXPECT_FALSE(settings->hasConfirmation());
    settings->confirm(); // too late
    EXPECT_TRUE(system.preferences()["showDockIcon"].toBool());

    system.resetToDefaults();
    settings->confirm();
    EXPECT_FALSE(settings->hasConfirmation());
    EXPECT_FALSE(system.preferences()["showDockIcon"].toBool());
    EXPECT_EQ(program.countOf("Settings reset to defaults"), 1);
}

TEST_F(SettingsPresentationTest, OffersEveryChoice) {
    program.machine.operatingSystem = OperatingSystem::gnuLinux;
    auto& system = open({.historyDurationMinutes = 90});
    system.set("notificationMinimumLevel", 1);
    system.set("recommendationVerbosity", 1);
    system.set("showContextInsights", false);
    system.set("temperatureUnit", 2);
    for (const int nowhere : {-1, 9}) {
        system.set("notificationMinimumLevel", nowhere);
        system.set("recommendationVerbosity", nowhere);
        system.set("temperatureUnit", nowhere);
        system.setHistoryLengthIndex(nowhere);
    }
    EXPECT_EQ(system.historyLengthLabels(), (QStringList{"15 min", "30 min", "45 min", "60 min", "90 min"}));
    EXPECT_EQ(system.historyLengthIndex(), 4);
    system.setHistoryLengthIndex(1);
    EXPECT_EQ(system.historyLengthLabels().size(), 4);
    system.set("showProcessOffenders", false);
    EXPECT_TRUE(system.preferences()["showProcessOffenders"].toBool());
    EXPECT_EQ(system.ranksApplicationsDetail(), "Always on: advice and alerts are made from it.");
    system.set("showProcessOffenders", true);
    EXPECT_EQ(system.ranksApplicationsDetail(), "");
    EXPECT_TRUE(system.offersTemperatureUnit());
    const AppSettingsFields expected{.notificationMinimumLevel = NotificationMinimumLevel::critical,
                                     .recommendationVerbosity = RecommendationVerbosity::detailed,
                                     .showContextInsights = false,
                                     .historyDurationMinutes = 30,
                                     .temperatureUnit = TemperatureUnit::fahrenheit};
    EXPECT_EQ(*program.state->published().settings, expected);
    system.set("historyEnabled", false);
    EXPECT_FALSE(system.preferences()["historyEnabled"].toBool());
}

} // namespace
} // namespace cindertop::ui
