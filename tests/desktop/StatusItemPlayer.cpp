// Puts a status item with its menu on the session bus. Reads looks from standard input, a line each ("fair"),
// and prints what happens: "tray: shown", "look: fair", "click: 12 7", "menu: quit".

#include "app/FakeProgram.h"
#include "ui/theme/FlameImages.h"
#include "ui/theme/Theme.h"
#include "ui/tray/StatusMenu.h"
#include "ui/tray/StatusNotifierItem.h"

#include <QDBusConnection>
#include <QGuiApplication>
#include <QSocketNotifier>
#include <functional>
#include <iostream>
#include <string>

#include <unistd.h>

namespace cindertop::testing {

namespace {

void tell(const std::string& what) {
    std::cout << what << '\n' << std::flush;
}

std::function<void()> telling(const char* action) {
    return [action] { tell(std::string("menu: ") + action); };
}

ui::StatusMenu::Actions actionsFor(AppState& state) {
    return {.open = telling("open"),
            .toggleMonitoring =
                [&state] {
                    state.setPaused(!*state.published().isPaused);
                    tell("menu: toggle monitoring");
                },
            .checkForUpdates = telling("check for updates"),
            .openHelp = telling("open help"),
            .openPreferences = telling("open preferences"),
            .quit = telling("quit")};
}

void show(ui::StatusNotifierItem& item, const ui::FlameImages& images, const std::string& look) {
    const auto status = fromRawValue<ThermalAssistantPresentation::Status>(look);
    if (!status) {
        tell("no such look: " + look);
        return;
    }
    item.setImage(images.of(*status));
    item.setToolTip("Cindertop - " + label(*status));
    item.setTitle(ui::StatusTitle{.text = " " + label(*status), .color = {}, .opacity = 1});
    tell("look: " + look);
}

int run(int argumentCount, char** arguments) {
    const QGuiApplication application(argumentCount, arguments);
    FakeProgram program;
    auto& state = program.start();
    const ui::StatusMenu menu(QDBusConnection::sessionBus(), state, actionsFor(state));
    const auto images = ui::FlameImages::draw();
    ui::StatusNotifierItem item(QDBusConnection::sessionBus());
    item.setAction([](const QPoint& point) {
        tell("click: " + std::to_string(point.x()) + " " + std::to_string(point.y()));
    });
    item.watcher().observeHost(
        [&item] { tell(item.watcher().hasHost() ? "tray: shown" : "tray: there is none"); });
    QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, &input, [&] {
        std::string line;
        if (std::getline(std::cin, line)) {
            show(item, images, line);
        } else {
            QCoreApplication::quit();
        }
    });
    return QCoreApplication::exec();
}

} // namespace

} // namespace cindertop::testing

int main(int argumentCount, char** arguments) {
    return cindertop::testing::run(argumentCount, arguments);
}
