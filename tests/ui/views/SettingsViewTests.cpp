#include "ShownProgram.h"
#include "ui/presentation/OnboardingPresentation.h"
#include "ui/presentation/SettingsPresentation.h"

#include <gtest/gtest.h>

namespace cindertop::ui {
namespace {

class SettingsViewTest : public testing::Test {
protected:
    ShownProgram shown;
    SettingsPresentation presentation{*shown.state, shown.actions()};
    OnboardingPresentation onboarding{*shown.state, shown.actions()};
    std::unique_ptr<QWindow> window;

    void open(std::unique_ptr<QWindow> opened) {
        window = std::move(opened);
        show(*window);
        draw(*window);
    }

    void openSystemTab() {
        presentation.selectTab(static_cast<int>(SettingsTab::system));
        open(shown.views->makeSettings(presentation));
    }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        ui::press(*window, key, modifiers);
    }

    QString focused() const { return focusedIn(*window); }

    /// Presses everything with this name as assistive technology does; how many there were.
    int pressAll(const QString& name, QAccessible::Role role) {
        int count = 0;
        for (auto* const item : accessibleIn(*window)) {
            if (item->role() == role && item->text(QAccessible::Name) == name) {
                item->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
                ++count;
            }
        }
        draw(*window);
        return count;
    }
};

TEST_F(SettingsViewTest, AssistiveTechnologyWorksEveryControl) {
    openSystemTab();
    const auto& published = shown.state->published();
    for (const auto& [name, member] : {
             std::pair("Show in Dock", &AppSettingsFields::showDockIcon),
             std::pair("System Notifications", &AppSettingsFields::notificationsEnabled),
             std::pair("SoC Temperature", &AppSettingsFields::experimentalTemperatureSensorsEnabled),
             std::pair("Diagnostic Logs", &AppSettingsFields::diagnosticLogsEnabled),
         }) {
        const bool before = (*published.settings).*member;
        EXPECT_EQ(pressAll(name, QAccessible::CheckBox), 1) << name;
        EXPECT_NE((*published.settings).*member, before) << name;
    }
    EXPECT_EQ(pressAll("Launch at Login", QAccessible::CheckBox), 1);
    EXPECT_TRUE(*published.launchAtLoginEnabled);
    EXPECT_EQ(pressAll("CPU", QAccessible::PageTab), 1);
    EXPECT_EQ(presentation.selectedTab(), 2);
}

TEST_F(SettingsViewTest, TheKeyboardChangesTabs) {
    open(shown.views->makeSettings(presentation));
    for (const auto& [key, modifiers, tab] : {
             std::tuple(Qt::Key_3, Qt::ControlModifier, 2),
             std::tuple(Qt::Key_Tab, Qt::ControlModifier, 3),
             std::tuple(Qt::Key_Tab, Qt::NoModifier, 3), // to the tab bar
             std::tuple(Qt::Key_Right, Qt::NoModifier, 0),
             std::tuple(Qt::Key_Left, Qt::NoModifier, 3),
         }) {
        press(key, modifiers);
        EXPECT_EQ(presentation.selectedTab(), tab);
    }
    EXPECT_EQ(focused(), "System");
}

TEST_F(SettingsViewTest, AnOpenQuestionBlocksTheRest) {
    openSystemTab();
    ASSERT_EQ(pressAll("Reset", QAccessible::Button), 1);
    ASSERT_TRUE(presentation.hasConfirmation());
    for (const auto* const name : {"Reset Preferences", "Cancel", "Reset Preferences"}) {
        EXPECT_EQ(focused(), name);
        press(Qt::Key_Tab);
    }
    EXPECT_EQ(pressAll("Show in Dock", QAccessible::CheckBox), 1);
    EXPECT_FALSE(shown.state->published().settings->showDockIcon);
    press(Qt::Key_1, Qt::ControlModifier);
    EXPECT_EQ(presentation.selectedTab(), 3);

    press(Qt::Key_Escape);
    EXPECT_FALSE(presentation.hasConfirmation());
    EXPECT_EQ(shown.program.countOf("Settings reset to defaults"), 0);
    EXPECT_EQ(pressAll("Reset", QAccessible::Button), 1);
    EXPECT_EQ(pressAll("Reset Preferences", QAccessible::Button), 1);
    EXPECT_EQ(shown.program.countOf("Settings reset to defaults"), 1);
}

TEST_F(SettingsViewTest, WhereSomethingMayBeLostTheKeyboardStandsOnNo) {
    open(shown.views->makeSettings(presentation));
    int quits = 0;
    presentation.present({.title = "Quit?",
                          .message = "All of it.",
                          .confirmTitle = "Quit App",
                          .role = SettingsConfirmation::Role::destructive,
                          .action = [&quits] { ++quits; }});
    draw(*window);
    EXPECT_EQ(focused(), "Cancel");
    press(Qt::Key_Return);
    EXPECT_FALSE(presentation.hasConfirmation());
    EXPECT_EQ(quits, 0);
}

TEST_F(SettingsViewTest, TheTermsAreReadTickedAndAccepted) {
    shown.state->startHardwareCheckIfNeeded();
    shown.program.pass(std::chrono::seconds(1));
    open(shown.views->makeOnboarding(onboarding));
    const int height = window->height();
    for (const auto* const name : {"Terms", "Privacy Policy"}) {
        EXPECT_EQ(pressAll(name, QAccessible::Link), 1);
    }
    EXPECT_EQ(shown.asked, (QStringList{"terms", "privacy"}));
    EXPECT_EQ(pressAll("Nerd details", QAccessible::Button), 1);
    EXPECT_GT(window->height(), height + 100);
    EXPECT_FALSE(onboarding.canStart());
    EXPECT_EQ(pressAll("I accept the Terms and Privacy Policy", QAccessible::CheckBox), 1);
    EXPECT_TRUE(onboarding.canStart());
}

} // namespace
} // namespace cindertop::ui
