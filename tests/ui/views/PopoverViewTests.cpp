#include "ShownProgram.h"
#include "ui/presentation/PopoverPresentation.h"
#include "ui/windows/PopoverWindow.h"

#include <gtest/gtest.h>

#include <QCursor>
#include <cstdlib>

namespace cindertop::ui {
namespace {

const QStringList buttonsFromTheTop{"Disable Monitoring", "Check for Updates...", "Help / Feedback...",
                                    "Preferences...", "Quit"};

class PopoverViewTest : public testing::Test {
protected:
    ShownProgram shown;
    PopoverPresentation presentation{*shown.state, shown.actions()};
    std::unique_ptr<QWindow> window = shown.views->makePopover(presentation);

    PopoverViewTest() { show(*window); }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        ui::press(*window, key, modifiers);
    }

    QString focused() const { return focusedIn(*window); }

    std::vector<QAccessibleInterface*> buttons() const {
        auto all = accessibleIn(*window);
        std::erase_if(all, [](const auto* item) { return item->role() != QAccessible::Button; });
        return all;
    }
};

TEST_F(PopoverViewTest, AssistiveTechnologyCanPressEachButton) {
    QStringList names;
    for (auto* const button : buttons()) {
        names += button->text(QAccessible::Name);
        auto* const actions = button->actionInterface();
        ASSERT_NE(actions, nullptr);
        ASSERT_TRUE(actions->actionNames().contains(QAccessibleActionInterface::pressAction()));
        actions->doAction(QAccessibleActionInterface::pressAction());
    }
    EXPECT_EQ(names, buttonsFromTheTop);
    EXPECT_TRUE(*shown.state->published().isPaused);
    EXPECT_EQ(shown.asked, (QStringList{"help", "close", "settings", "close", "quit"}));

    QStringList texts;
    for (const auto* const item : accessibleIn(*window)) {
        if (item->role() == QAccessible::StaticText) {
            texts += item->text(QAccessible::Name);
        }
    }
    EXPECT_EQ(texts, (QStringList{"Paused", "Monitoring paused."}));
}

TEST_F(PopoverViewTest, FillsAnOrdinaryWindowAndSaysHowToComeBack) {
    PopoverPresentation other(*shown.state, shown.actions());
    other.setHasCompositor(false);
    other.setIsWindow(true);
    other.setHasStatusItem(false);
    const auto ordinary = shown.views->makePopover(other);
    show(*ordinary);
    const auto& quick = dynamic_cast<QQuickWindow&>(*ordinary);
    EXPECT_EQ(quick.color().alpha(), 255);
    EXPECT_GT(ordinary->width(), window->width());
    QStringList texts;
    for (const auto* const item : accessibleIn(*ordinary)) {
        texts += item->text(QAccessible::Name);
    }
    EXPECT_TRUE(texts.contains(other.note())) << texts.join('|').toStdString();
    const auto withNote = ordinary->height();
    other.setHasStatusItem(true);
    draw(*ordinary);
    EXPECT_LT(ordinary->height(), withNote);
}

TEST_F(PopoverViewTest, TheKeyboardReachesAndPressesEachButton) {
    for (const auto key : {Qt::Key_Tab, Qt::Key_Down}) {
        for (const auto& name : buttonsFromTheTop) {
            press(key);
            EXPECT_EQ(focused(), name);
        }
    }
    press(Qt::Key_Up);
    EXPECT_EQ(focused(), "Preferences...");
    press(Qt::Key_Return);
    press(Qt::Key_Space);
    press(Qt::Key_Q, Qt::ControlModifier);
    EXPECT_EQ(shown.asked, (QStringList{"settings", "close", "settings", "close", "quit"}));
}

TEST_F(PopoverViewTest, TheRowsKeepTheirPlacesAndTheWindowItsSize) {
    draw(*window);
    const auto place = [this] { return buttons().front()->rect(); };
    const auto before = place();
    for (const bool isPaused : {true, false, true}) { // brings a tip, takes it away
        shown.state->setPaused(isPaused);
        draw(*window);
        EXPECT_EQ(place(), before);
    }
    const auto panel = window->size();
    presentation.setHasCompositor(true);
    draw(*window);
    const int margins = 2 * presentation.shadowMargin();
    EXPECT_EQ(window->size(), panel + QSize(margins, margins));
    EXPECT_EQ(window->minimumSize(), window->size()); // nobody else may change it
    EXPECT_EQ(window->maximumSize(), window->size());
}

/// The panel's click, its window, and what closes it.
TEST(PopoverWindow, OpensAtThePointerWhereTheClickHasNoPlaceAndClosesByAClickOutside) {
    ShownProgram shown;
    int closings = 0;
    PopoverWindow popover(
        {.views = [&] { return std::shared_ptr<Views>(std::move(shown.views)); },
         .presentation = [&] { return std::make_unique<PopoverPresentation>(*shown.state, shown.actions()); },
         .didCloseByItself = [&] { ++closings; }});
    QCursor::setPos(700, 500);
    popover.show({0, 0});
    auto* const window = QGuiApplication::topLevelWindows().front();
    EXPECT_LE(std::abs(window->geometry().center().x() - 700), 1);
    EXPECT_NEAR(window->y(), 500, 10);
    for (const auto& [place, isShown] : {std::pair(QPointF(5, 5), true), std::pair(QPointF(-5, 5), false)}) {
        QMouseEvent click(QEvent::MouseButtonPress, place, window->position() + place, Qt::LeftButton,
                          Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(window, &click);
        EXPECT_EQ(popover.isShown(), isShown);
    }
    EXPECT_EQ(closings, 1);
}

} // namespace
} // namespace cindertop::ui
