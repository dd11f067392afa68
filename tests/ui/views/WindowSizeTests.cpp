#include "ShownProgram.h"
#include "ui/presentation/OnboardingPresentation.h"
#include "ui/presentation/PopoverPresentation.h"
#include "ui/presentation/SettingsPresentation.h"
#include "ui/windows/ProgramWindows.h"
#include "ui/windows/WindowSize.h"

#include <gtest/gtest.h>

#include <QQuickItem>

namespace cindertop::ui {
namespace {

constexpr QSize usualSettings{460, 640};

class WindowSizeTest : public testing::Test {
protected:
    ShownProgram shown;
    SettingsPresentation settings{*shown.state, shown.actions()};
    OnboardingPresentation onboarding{*shown.state, shown.actions()};
    PopoverPresentation popover{*shown.state, shown.actions()};
};

TEST_F(WindowSizeTest, TheUserSizesTheSettingsAndTheViewFollows) {
    const auto window = shown.views->makeSettings(settings);
    show(*window);
    EXPECT_EQ(window->size(), usualSettings);
    const auto& view = *dynamic_cast<QQuickWindow&>(*window).contentItem()->childItems().first();
    for (const auto size : {QSize(1200, 900), QSize(340, 300)}) {
        window->resize(size);
        draw(*window);
        EXPECT_EQ(window->size(), size);
        EXPECT_EQ(view.size(), QSizeF(size));
    }
}

TEST_F(WindowSizeTest, NoWindowIsLargerThanItsScreen) {
    popover.setHasCompositor(true);
    for (const double textScale : {1.0, 2.0}) {
        shown.appearance.setTextScale(textScale);
        const auto panel = shown.views->makePopover(popover);
        const auto full = panel->height();
        for (const auto& window :
             {shown.views->makeSettings(settings), shown.views->makeOnboarding(onboarding)}) {
            window->setScreen(&smallScreen());
            window->setPosition(smallScreen().geometry().topLeft());
            show(*window);
            draw(*window);
            const auto space = smallScreen().availableGeometry().size();
            EXPECT_LE(window->width(), space.width());
            EXPECT_LT(window->height(), space.height());
        }
        panel->setScreen(&smallScreen());
        const auto margins = 2 * popover.shadowMargin();
        EXPECT_EQ(panel->height(), std::min(full, smallScreen().size().height() + margins));
        panel->setScreen(QGuiApplication::primaryScreen());
        EXPECT_EQ(panel->height(), full);
    }
}

TEST_F(WindowSizeTest, TheSettingsKeepTheSizeThatTheUserGaveThem) {
    auto& defaults = shown.program.defaults;
    ProgramWindows windows(shown.appearance, {.say = [](const QString&) {}, .startAnew = nullptr});
    windows.present(*shown.state, shown.actions(), [] {});
    const auto open = [&]() -> QWindow& {
        windows.showSettings();
        for (auto* const window : QGuiApplication::topLevelWindows()) {
            if (window->isVisible()) {
                return *window;
            }
        }
        throw std::logic_error("no window");
    };
    EXPECT_EQ(open().size(), usualSettings);
    windows.closeAll();
    EXPECT_EQ(storedSettingsSize(defaults), std::nullopt); // as it came
    open().resize(800, 700);
    windows.closeAll();
    EXPECT_EQ(open().size(), QSize(800, 700));
    windows.closeAll();
    storeSettingsSize(defaults, QSize(9000, 8000)); // of a screen that is gone
    const auto room = QGuiApplication::primaryScreen()->size();
    EXPECT_EQ(open().size().boundedTo(room), open().size());
    open().setWindowStates(Qt::WindowMaximized);
    windows.closeAll();
    EXPECT_EQ(storedSettingsSize(defaults), QSize(9000, 8000));
}

TEST_F(WindowSizeTest, IgnoresAStoredSizeThatIsNone) {
    fakes::FakeUserDefaults defaults;
    for (const auto* const text :
         {"", "460", "x640", "460x", "-460x640", "460x640x1", "0x640", "460x99999999999"}) {
        defaults.set("cindertop.settings.window-size", std::string(text));
        EXPECT_EQ(storedSettingsSize(defaults), std::nullopt) << text;
    }
    storeSettingsSize(defaults, QSize(460, 640));
    EXPECT_EQ(storedSettingsSize(defaults), QSize(460, 640));
}

} // namespace
} // namespace cindertop::ui
