#include "ShownProgram.h"
#include "ui/presentation/OnboardingPresentation.h"
#include "ui/presentation/PopoverPresentation.h"
#include "ui/presentation/SettingsPresentation.h"

#include <gtest/gtest.h>

namespace cindertop::ui {
namespace {

/// What is told in a window and leaves it to the left or right.
QStringList cutIn(QWindow& window) {
    QStringList cut;
    const auto frame = window.geometry();
    for (const auto* const item : accessibleIn(window)) {
        const auto rect = item->rect();
        const auto name = item->text(QAccessible::Name);
        if (!name.isEmpty() && rect.width() > 0 &&
            (rect.left() < frame.left() || rect.right() > frame.right())) {
            cut += name;
        }
    }
    return cut;
}

/// Of the one with this name.
QRect placeOf(QWindow& window, const QString& name) {
    for (const auto* const item : accessibleIn(window)) {
        if (item->text(QAccessible::Name) == name) {
            return item->rect().translated(-window.position());
        }
    }
    return {};
}

class WholeViewTest : public testing::TestWithParam<std::tuple<double, Qt::LayoutDirection>> {
protected:
    ShownProgram shown;
    SettingsPresentation settings{*shown.state, shown.actions()};
    OnboardingPresentation onboarding{*shown.state, shown.actions()};
    PopoverPresentation popover{*shown.state, shown.actions()};

    WholeViewTest() {
        QGuiApplication::setLayoutDirection(std::get<1>(GetParam()));
        shown.appearance.setTextScale(std::get<0>(GetParam()));
        auto& processes = shown.program.machine.processes;
        processes.add(12, "an application whose name is as long as sixty characters are");
        for (int second = 0; second < 10; ++second) {
            processes.processes.back().accounting->totalUserTime += 3'000'000'000;
            shown.program.pass(std::chrono::seconds(1));
        }
    }

    void TearDown() override { QGuiApplication::setLayoutDirection(Qt::LeftToRight); }
};

TEST_P(WholeViewTest, NothingIsCutAtTheSides) {
    const Complaints complaints;
    for (const auto width : {340, 460, 1200}) {
        for (int tab = 0; tab < static_cast<int>(settingsTabs.size()); ++tab) {
            const auto window = shown.views->makeSettings(settings);
            window->resize(width, 300);
            show(*window);
            settings.selectTab(tab);
            draw(*window);
            EXPECT_EQ(cutIn(*window).join('|').toStdString(), "") << width << " tab " << tab;
        }
    }
    for (const auto& window : {shown.views->makeOnboarding(onboarding), shown.views->makePopover(popover)}) {
        for (auto* const screen : {QGuiApplication::primaryScreen(), &smallScreen()}) {
            window->setScreen(screen);
            window->setPosition(screen->geometry().topLeft());
            show(*window);
            draw(*window);
            EXPECT_EQ(cutIn(*window).join('|').toStdString(), "") << screen->name().toStdString();
        }
    }
    EXPECT_EQ(Complaints::list().join('\n').toStdString(), "");
}

TEST_P(WholeViewTest, TheLayoutFollowsTheDirection) {
    const auto window = shown.views->makeSettings(settings);
    show(*window);
    draw(*window);
    const bool isMirrored = std::get<1>(GetParam()) == Qt::RightToLeft;
    EXPECT_EQ(placeOf(*window, "System").left() < placeOf(*window, "CPU").left(), isMirrored);
}

INSTANTIATE_TEST_SUITE_P(Texts, WholeViewTest,
                         testing::Combine(testing::Values(1.0, 2.0),
                                          testing::Values(Qt::LeftToRight, Qt::RightToLeft)));

TEST(OpenWindow, TurnsDarkWithTheDesktop) {
    ShownProgram shown;
    SettingsPresentation settings(*shown.state, shown.actions());
    const auto window = shown.views->makeSettings(settings);
    auto& quick = dynamic_cast<QQuickWindow&>(*window);
    show(*window);
    for (const bool isDark : {false, true, false}) {
        shown.appearance.setDark(isDark);
        const auto picture = quick.grabWindow();
        EXPECT_EQ(picture.pixelColor(2, 2), shown.appearance.materials().popover);
        EXPECT_EQ(quick.color(), shown.appearance.materials().popover);
    }
}

TEST(OpenWindow, FeedbackTakesAPlaceThatWasFree) {
    ShownProgram shown;
    SettingsPresentation settings(*shown.state, shown.actions());
    settings.selectTab(static_cast<int>(SettingsTab::system));
    const auto window = shown.views->makeSettings(settings);
    show(*window);
    draw(*window);
    const auto before = placeOf(*window, "About Cindertop");
    shown.state->setLaunchAtLogin(true);
    draw(*window);
    EXPECT_NE(settings.system()->launchAtLoginDetail(), "");
    EXPECT_EQ(placeOf(*window, "About Cindertop"), before);
}

} // namespace
} // namespace cindertop::ui
