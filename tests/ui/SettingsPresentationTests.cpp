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

TEST_F(SettingsPresentationTest, OpensOnInfoAndGoesRoundTheTabs) {
    open();
    EXPECT_EQ(settings->tabTitles(), (QStringList{"Info", "Monitoring", "CPU", "System"}));
    EXPECT_EQ(settings->tabSymbolNames(),
              (QStringList{"info.circle", "chart.xyaxis.line", "cpu", "gearshape"}));
    EXPECT_EQ(settings->selectedTab(), 0);
    for (const auto& [asked, selected] : {std::pair(-1, 3), std::pair(4, 0), std::pair(2, 2)}) {
        settings->selectTab(asked);
        EXPECT_EQ(settings->selectedTab(), selected);
    }
}

TEST_F(SettingsPresentationTest, OffersTheTemperatureOnlyWithSensors) {
    auto& system = open();
    EXPECT_EQ(system.modeLabels(), (QStringList{"Icon Only", "Thermal Status"}));
    system.setModeIndex(1);
    for (const int missing : {-1, 2}) {
        system.setModeIndex(missing);
        EXPECT_EQ(*state->published().menuBarInfoMode, MenuBarInfoMode::thermalStatus);
    }

    system.setReadsTemperatures(true);
    EXPECT_EQ(system.modeLabels(), (QStringList{"Icon Only", "Thermal Status", "Temperature"}));
    EXPECT_EQ(system.modeSymbolNames(), (QStringList{"flame", "speedometer", "thermometer.medium"}));
    EXPECT_EQ(system.modeIndex(), 1);
    system.setModeIndex(2);
    system.setReadsTemperatures(false);
    EXPECT_EQ(system.modeIndex(), 0);
}

TEST_F(SettingsPresentationTest, SaysWhyThereAreNoNotifications) {
    program.notificationCenter.status = NotificationAuthorizationStatus::notDetermined;
    program.notificationCenter.answer = NotificationPermission::refused;
    auto& system = open();
    EXPECT_EQ(system.notificationsDetail(), "");
    system.setNotificationsEnabled(true);
    program.executor.runTasks();
    EXPECT_EQ(program.notificationCenter.prompts.size(), 1);
    EXPECT_EQ(system.notificationsDetail(),
              "Permission denied. Allow Cindertop notifications in System Settings > Notifications.");
    system.setNotificationsEnabled(false);
    program.executor.runTasks();
    EXPECT_EQ(system.notificationsDetail(), "");
}

TEST_F(SettingsPresentationTest, TellsWhatCameOfLaunchAtLogin) {
    auto& system = open();
    EXPECT_EQ(system.launchAtLoginDetail(), "");
    system.setLaunchesAtLogin(true);
    EXPECT_TRUE(system.launchesAtLogin());
    EXPECT_EQ(system.launchAtLoginDetail(), "Launch at Login enabled");

    program.loginItem.error = LoginItemError{std::make_error_code(std::errc::io_error), "The disk is full."};
    program.loginItem.answer = LoginItemStatus::notFound;
    system.setLaunchesAtLogin(true);
    EXPECT_FALSE(system.launchesAtLogin());
    EXPECT_EQ(system.launchAtLoginDetail(), "The disk is full. · Unavailable");
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
    EXPECT_TRUE(system.showsDockIcon());

    system.resetToDefaults();
    settings->confirm();
    EXPECT_FALSE(settings->hasConfirmation());
    EXPECT_FALSE(system.showsDockIcon());
    EXPECT_EQ(program.countOf("Settings reset to defaults"), 1);
}

TEST_F(SettingsPresentationTest, OffersEveryChoice) {
    program.machine.operatingSystem = OperatingSystem::gnuLinux;
    auto& system = open({.historyDurationMinutes = 90});
    system.setAlertLevelIndex(1);
    system.setVerbosityIndex(1);
    system.setShowsContextInsights(false);
    system.setTemperatureUnitIndex(2);
    for (const int nowhere : {-1, 9}) {
        system.setAlertLevelIndex(nowhere);
        system.setVerbosityIndex(nowhere);
        system.setTemperatureUnitIndex(nowhere);
        system.setHistoryLengthIndex(nowhere);
    }
    EXPECT_EQ(system.historyLengthLabels(), (QStringList{"15 min", "30 min", "45 min", "60 min", "90 min"}));
    EXPECT_EQ(system.historyLengthIndex(), 4);
    system.setHistoryLengthIndex(1);
    EXPECT_EQ(system.historyLengthLabels().size(), 4);
    system.setRanksApplications(false);
    EXPECT_TRUE(system.ranksApplications());
    EXPECT_EQ(system.ranksApplicationsDetail(), "Always on: advice and alerts are made from it.");
    system.setRanksApplications(true);
    EXPECT_EQ(system.ranksApplicationsDetail(), "");
    EXPECT_TRUE(system.offersTemperatureUnit());
    const AppSettingsFields expected{.notificationMinimumLevel = NotificationMinimumLevel::critical,
                                     .recommendationVerbosity = RecommendationVerbosity::detailed,
                                     .showContextInsights = false,
                                     .historyDurationMinutes = 30,
                                     .temperatureUnit = TemperatureUnit::fahrenheit};
    EXPECT_EQ(program.state->currentFields(), expected);
    system.setRecordsHistory(false);
    EXPECT_FALSE(system.recordsHistory());
}

TEST_F(SettingsPresentationTest, ShowsForAWhileThatAnExportSucceeded) {
    auto& system = open();
    system.exportLogs();
    program.desktop.answer("/data/export.json");
    EXPECT_TRUE(system.exportSucceeded());
    program.pass(2600ms);
    EXPECT_FALSE(system.exportSucceeded());
}

} // namespace
} // namespace cindertop::ui
