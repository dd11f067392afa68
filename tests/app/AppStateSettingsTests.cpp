#include "FakeProgram.h"
#include "persistence/Preferences.h"

#include <gtest/gtest.h>

namespace cindertop {
namespace {

using namespace std::chrono_literals;

AppSettings stored(FakeProgram& program) {
    return AppSettingsStore(program.defaults, defaultSettings(program.machine.operatingSystem)).load();
}

TEST(AppStateSettings, EveryChangeIsStoredAsAWholeRecord) {
    FakeProgram program;
    auto& state = program.start();
    const auto untouched = program.defaults.changes.size();
    state.applySettings(AppSettings({.showDockIcon = true, .showContextInsights = false}));
    EXPECT_EQ(program.defaults.changes.size(), untouched);
    state.set(&AppSettingsFields::recommendationVerbosity, RecommendationVerbosity::detailed);
    EXPECT_EQ(stored(program), AppSettings({.showDockIcon = true,
                                            .recommendationVerbosity = RecommendationVerbosity::detailed,
                                            .showContextInsights = false}));
}

TEST(AppStateSettings, EachPreferenceIsAssignedByItsName) {
    for (const auto& preference : preferences()) {
        FakeProgram program;
        auto& state = program.startWith({.experimentalTemperatureSensorsEnabled = true});
        const AppSettingsFields wanted{.experimentalTemperatureSensorsEnabled = false,
                                       .menuBarInfoMode = MenuBarInfoMode::temperature,
                                       .showDockIcon = true,
                                       .diagnosticLogsEnabled = false,
                                       .notificationsEnabled = true,
                                       .notificationMinimumLevel = NotificationMinimumLevel::critical,
                                       .recommendationVerbosity = RecommendationVerbosity::detailed,
                                       .showProcessOffenders = false,
                                       .showContextInsights = false,
                                       .historyEnabled = false,
                                       .historyDurationMinutes = 90};
        const auto value = preference.read(wanted);
        AppSettingsFields expected{.experimentalTemperatureSensorsEnabled = true};
        ASSERT_TRUE(preference.write(expected, value)) << preference.name;
        ASSERT_TRUE(state.set(preference, value)) << preference.name;
        EXPECT_EQ(*state.published().settings, expected) << preference.name;
        EXPECT_EQ(stored(program), AppSettings(expected)) << preference.name;
    }
}

TEST(AppStateSettings, TheTemperatureLeavesTheMenuBarWithTheSensors) {
    using enum MenuBarInfoMode;
    for (const auto& [before, after] :
         {std::pair{temperature, none}, std::pair{thermalScore, thermalScore}}) {
        FakeProgram program;
        auto& state = program.startWith({.experimentalTemperatureSensorsEnabled = true});
        state.set(&AppSettingsFields::menuBarInfoMode, before);
        state.set(&AppSettingsFields::experimentalTemperatureSensorsEnabled, false);
        EXPECT_EQ(program.published().settings->menuBarInfoMode, after);
        EXPECT_EQ(stored(program), AppSettings({.menuBarInfoMode = after}));
        EXPECT_EQ(program.countOf("Thermal monitoring started"), 2);
    }
}

TEST(AppStateSettings, TheHistoryLastsAQuarterToThreeHours) {
    FakeProgram program;
    auto& state = program.start();
    for (const auto& [minutes, expected] :
         {std::pair{5, 15}, std::pair{15, 15}, std::pair{60, 60}, std::pair{180, 180}, std::pair{240, 180}}) {
        state.set(&AppSettingsFields::historyDurationMinutes, minutes);
        EXPECT_EQ(program.published().settings->historyDurationMinutes, expected);
        EXPECT_EQ(stored(program)->historyDurationMinutes, expected);
    }
}

TEST(AppStateSettings, SwitchesTakeEffectAtOnce) {
    FakeProgram program;
    auto& state = program.start();
    program.machine.hostStatistics.load = HostCpuLoad{};
    program.pass(0s);
    program.machine.hostStatistics.load = HostCpuLoad{.user = 50, .system = 0, .idle = 50, .nice = 0};
    program.pass(2s);
    const auto& published = program.published();
    EXPECT_EQ(state.machineSnapshot()->cpuPercent, 50);
    EXPECT_EQ(published.monitoringSnapshot->samples.size(), 1U);
    EXPECT_TRUE(program.exists(FakeProgram::historyFile));

    state.set(&AppSettingsFields::historyEnabled, false);
    program.executor.runTasks();
    EXPECT_EQ(*published.monitoringSnapshot, ThermalMonitoringSnapshot::empty());
    EXPECT_FALSE(program.exists(FakeProgram::historyFile));
    program.pass(2s);
    EXPECT_EQ(state.machineSnapshot()->cpuPercent, std::nullopt); // it is no longer asked
    EXPECT_EQ(program.samples, 1);
    state.set(&AppSettingsFields::historyEnabled, true);
    program.pass(2s);
    EXPECT_EQ(program.samples, 2);

    state.set(&AppSettingsFields::showProcessOffenders, false);
    EXPECT_EQ(*published.processOffenderSnapshot, ProcessOffenderSnapshot::empty());
    program.pass(2s);
    EXPECT_EQ(*published.processOffenderSnapshot, ProcessOffenderSnapshot::empty());
    state.set(&AppSettingsFields::showProcessOffenders, true);
    program.pass(2s);
    EXPECT_EQ(published.processOffenderSnapshot->state, ProcessOffenderSnapshotState::collecting);

    state.set(&AppSettingsFields::showDockIcon, true);
    state.set(&AppSettingsFields::showDockIcon, false);
    using enum ActivationPolicy;
    EXPECT_EQ(program.desktop.policies.back(), accessory);
    EXPECT_EQ(program.desktop.policies.at(program.desktop.policies.size() - 2), regular);
}

TEST(AppStateSettings, HiddenOffendersLeaveTheAdviceWithTheNextTick) {
    FakeProgram program;
    program.machine.pressure->play({2});
    auto& state = program.start();
    program.pass(0s);
    program.machine.processes.processes.front().accounting->totalUserTime += 20'000'000'000;
    program.pass(3s);
    const auto namesOffender = [&program] {
        const auto& advice = program.published().recommendationSnapshot->primaryInsight;
        return advice && advice->relatedOffenderID.has_value();
    };
    EXPECT_TRUE(namesOffender());
    state.set(&AppSettingsFields::showProcessOffenders,
              false); // another primary advice has to be confirmed once
    program.pass(200ms);
    EXPECT_FALSE(namesOffender());
}

TEST(AppStateSettings, TheAnswerToTheLatestNotificationSwitchCounts) {
    FakeProgram program;
    auto& state = program.start();
    const auto& published = program.published().systemNotificationState;
    auto& center = program.notificationCenter;
    center.holdsAnswers = true;
    for (const bool isEnabled : {true, false}) {
        state.set(&AppSettingsFields::notificationsEnabled, isEnabled);
        program.executor.runTasks();
    }
    EXPECT_EQ(*published, SystemNotificationState::disabled);
    ASSERT_TRUE(center.answerNext()); // to the first switch, too late
    EXPECT_EQ(*published, SystemNotificationState::disabled);

    state.set(&AppSettingsFields::notificationsEnabled, true);
    program.executor.runTasks();
    center.status = NotificationAuthorizationStatus::denied;
    ASSERT_TRUE(center.answerNext());
    EXPECT_EQ(*published, SystemNotificationState::denied);
}

TEST(AppStateSettings, ADeliveryDoesNotUndoASwitch) {
    FakeProgram program;
    program.machine.pressure->play({3});
    auto& state = program.startWith({.notificationsEnabled = true});
    program.notificationCenter.holdsAnswers = true;
    program.pass(0s);
    state.set(&AppSettingsFields::notificationsEnabled, false);
    program.executor.runTasks();
    while (program.notificationCenter.answerNext()) {
    }
    EXPECT_EQ(*program.published().systemNotificationState, SystemNotificationState::disabled);
    EXPECT_EQ(program.ticks, 1);
}

TEST(AppStateSettings, AResetTakesTheLoginItemAlong) {
    using enum LoginItemStatus;
    for (const auto status : {enabled, requiresApproval, notFound}) {
        FakeProgram program;
        program.loginItem.answer = status;
        auto& state = program.startWith({.experimentalTemperatureSensorsEnabled = true,
                                         .menuBarInfoMode = MenuBarInfoMode::temperature,
                                         .historyDurationMinutes = 90});
        state.resetSettingsToDefaults();
        EXPECT_EQ(state.currentSettings(), AppSettings());
        EXPECT_EQ(stored(program), AppSettings());
        EXPECT_EQ(program.loginItem.answer, status == notFound ? notFound : notRegistered);
        EXPECT_EQ(program.countOf("Launch at Login disabled"), status == notFound ? 0 : 1);
        EXPECT_EQ(program.events.back().message, "Settings reset to defaults");
    }
}

} // namespace
} // namespace cindertop
