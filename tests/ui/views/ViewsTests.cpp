#include "ShownProgram.h"
#include "ui/presentation/OnboardingPresentation.h"
#include "ui/presentation/PopoverPresentation.h"
#include "ui/presentation/SettingsPresentation.h"

#include <gtest/gtest.h>

#include <QDirIterator>
#include <QFont>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>

namespace cindertop::ui {
namespace {

TEST(Views, EveryFileLoads) {
    const ShownProgram shown;
    ASSERT_TRUE(shown.views);
    QQmlEngine engine;
    engine.addImportPath(":/qt/qml");
    int files = 0;
    for (QDirIterator file(":/qt/qml/Cindertop", {"*.qml"}, QDir::Files, QDirIterator::Subdirectories);
         file.hasNext(); ++files) {
        const QQmlComponent component(&engine, QUrl("qrc" + file.next()));
        EXPECT_TRUE(component.isReady()) << component.errorString().toStdString();
    }
    EXPECT_GT(files, 10);
}

TEST(Views, EveryWindowShowsWithoutAComplaint) {
    for (const bool isDark : {false, true}) {
        const Complaints complaints;
        ShownProgram shown;
        ASSERT_TRUE(shown.views);
        shown.appearance.setDark(isDark);
        PopoverPresentation popover(*shown.state, shown.actions());
        SettingsPresentation settings(*shown.state, shown.actions());
        OnboardingPresentation onboarding(*shown.state, shown.actions());
        for (const auto& window : {shown.views->makePopover(popover), shown.views->makeSettings(settings),
                                   shown.views->makeOnboarding(onboarding)}) {
            ASSERT_TRUE(window);
            show(*window);
            shown.program.pass(std::chrono::seconds(10));
            shown.state->setPaused(isDark);
            popover.setHasCompositor(isDark);
            draw(*window);
        }
        EXPECT_EQ(Complaints::list().join('\n').toStdString(), "");
    }
}

} // namespace
} // namespace cindertop::ui
