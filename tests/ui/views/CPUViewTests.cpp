#include "ShownProgram.h"
#include "ui/presentation/SettingsPresentation.h"

#include <gtest/gtest.h>

namespace cindertop::ui {
namespace {

/// The CPU tab of a program with two busy processes.
class CPUViewTest : public testing::Test {
protected:
    ShownProgram shown;
    SettingsPresentation presentation{*shown.state, shown.actions()};
    std::unique_ptr<QWindow> window;

    CPUViewTest() {
        auto& processes = shown.program.machine.processes;
        processes.processes.clear();
        processes.add(12, "alder");
        processes.add(13, "birch");
        pass(3, 1);
        presentation.selectTab(static_cast<int>(SettingsTab::cpu));
        window = shown.views->makeSettings(presentation);
        show(*window);
        draw(*window);
    }

    void pass(std::uint64_t alder, std::uint64_t birch) {
        auto& processes = shown.program.machine.processes.processes;
        for (int second = 0; second < 10; ++second) {
            processes[0].accounting->totalUserTime += alder * 1'000'000'000;
            processes[1].accounting->totalUserTime += birch * 1'000'000'000;
            shown.program.pass(std::chrono::seconds(1));
        }
        if (window) {
            draw(*window);
        }
    }

    void press(Qt::Key key) {
        ui::press(*window, key);
        draw(*window);
    }

    QString focused() const { return focusedIn(*window); }
};

TEST_F(CPUViewTest, ARowKeepsTheFocusWhileTheListMovesAndAfterItsDetail) {
    for (int tab = 0; tab < 10 && focused() != "birch"; ++tab) {
        press(Qt::Key_Tab);
    }
    ASSERT_EQ(focused(), "birch");
    pass(1, 3); // birch is the first now
    EXPECT_EQ(focused(), "birch");
    press(Qt::Key_Down);
    EXPECT_EQ(focused(), "alder");
    press(Qt::Key_Return);
    EXPECT_TRUE(presentation.cpu()->hasSelection());
    EXPECT_EQ(focused(), "Back to CPU");
    pass(3, 1);
    press(Qt::Key_Escape);
    EXPECT_FALSE(presentation.cpu()->hasSelection());
    EXPECT_EQ(focused(), "alder");
}

} // namespace
} // namespace cindertop::ui
