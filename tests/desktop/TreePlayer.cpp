#include "agent/DesktopFrontend.h"
#include "agent/LiveProgram.h"
#include "app/EventLoopTimers.h"
#include "platform/linux/PropertyListUserDefaults.h"
#include "platform/qt/FreedesktopNotificationCenter.h"

#include <QDBusConnection>
#include <QGuiApplication>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <optional>
#include <string_view>

namespace cindertop::agent {

namespace {

Opening openingOf(std::string_view word) {
    return word == "popover"    ? Opening::popover
           : word == "settings" ? Opening::settings
                                : Opening::onboarding;
}

/// The live program over the files of another machine: FOLDER/proc and FOLDER/sys. The home is the
/// caller's.
int play(const std::filesystem::path& folder, Opening opening) {
    const auto folders = UserFolders::ofUser();
    PosixFileSystem files;
    linux_platform::PropertyListUserDefaults defaults(linux_platform::PropertyListUserDefaults::defaultFile(),
                                                      files);
    EventLoopTimers timers;
    auto bus = QDBusConnection::sessionBus();
    desktop::FreedesktopNotificationCenter notifications(bus, timers, defaults, nullptr);
    LiveProgram program(folders, defaults, notifications, {.proc = folder / "proc", .sys = folder / "sys"});
    DesktopFrontend frontend(
        std::nullopt, bus, [](const QString& text) { std::cerr << text.toStdString() << '\n'
                                                               << std::flush; },
        [](Opening, const QString&) { return false; });
    AppState state(frontend.completed(program.environment()));
    frontend.start(state, opening, false);
    const int status = QCoreApplication::exec();
    frontend.end();
    return status;
}

} // namespace

} // namespace cindertop::agent

/// usage: tree-player FOLDER popover|settings|onboarding
int main(int argumentCount, char** arguments) {
    const QGuiApplication application(argumentCount, arguments);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    if (argumentCount != 3) {
        return EXIT_FAILURE;
    }
    return cindertop::agent::play(arguments[1], cindertop::agent::openingOf(arguments[2]));
}
