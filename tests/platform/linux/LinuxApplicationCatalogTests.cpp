#include "DesktopTree.h"
#include "ScriptedProcesses.h"
#include "platform/linux/ApplicationHints.h"
#include "platform/linux/LinuxApplicationCatalog.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include <unistd.h>

namespace cindertop::linux_platform {
namespace {

constexpr std::string_view userManager = "0::/user.slice/user-1000.slice/user@1000.service/";

class LinuxApplicationCatalogTest : public testing::Test {
protected:
    LinuxApplicationCatalogTest() {
        browser = desktop.program("lib/browser/browser");
        shell = desktop.program("lib/desktop-shell");
        desktop.entry("share", "browser", "Name=Browser\nName[de]=Webbrowser\nExec=" + browser + " %U")
            .entry("share", "org.a.Shell", "Name=Shell\nExec=" + shell)
            .entry("share", "org.a.Maps", "Name=Karten")
            .entry("share", "mail", "Name=Post")
            .entry("share", "firefox_firefox", "Name=Feuerfuchs")
            .entry("share", "terminal", "Name=Terminal");
    }

    void unit(std::int32_t process, std::string_view below) {
        machine.file(process, "cgroup", std::string(userManager) + std::string(below) + "\n");
    }

    void launchedFrom(std::int32_t process, const std::string& file, std::int32_t launched) {
        machine.file(process, "environ",
                     "A=b" + std::string(1, '\0') + "GIO_LAUNCHED_DESKTOP_FILE=" + file +
                         std::string(1, '\0') + "GIO_LAUNCHED_DESKTOP_FILE_PID=" + std::to_string(launched) +
                         std::string(1, '\0'));
    }

    /// The display name of the application, or "none".
    std::string application(std::int32_t process) {
        processes.countProcesses();
        processes.accounting(process);
        const auto found = catalog.applicationOfProcess(process);
        return found ? found->displayName : "none";
    }

    ScriptedMachine machine;
    DesktopTree desktop;
    std::string browser;
    std::string shell;
    std::uint64_t started = 100;
    LinuxProcessTable processes{machine.tree().roots(), machine.clocks()};
    LinuxApplicationCatalog catalog{machine.tree().roots(), processes, desktop.entries()};
};

TEST_F(LinuxApplicationCatalogTest, DescribesAnInstalledApplication) {
    machine.run({.identifier = 42, .name = "browser"}).executable(42, browser);
    EXPECT_EQ(
        catalog.applicationOfProcess(42),
        (ProcessApplication{desktop.path("share/applications/browser.desktop"), "browser", "Webbrowser"}));
    EXPECT_EQ(catalog.openBundle("/Applications/Maps.app"), nullptr);
    EXPECT_EQ(catalog.status(),
              (SourceStatus{"applications", true, "6 desktop entries, no units of systemd"}));
}

TEST_F(LinuxApplicationCatalogTest, TheStrongerMarkWins) {
    machine.run({.identifier = 42, .name = "process"});
    const auto now = [&] {
        machine.run({.identifier = 42, .name = "process", .startTicks = ++started});
        return application(42);
    };
    EXPECT_EQ(now(), "none");
    machine.run({.identifier = 41, .name = "browser"}).executable(41, browser);
    EXPECT_EQ(now(), "none"); // not its parent
    machine.executable(42, browser);
    EXPECT_EQ(now(), "Webbrowser");
    launchedFrom(42, desktop.path("share/applications/mail.desktop"), 42);
    EXPECT_EQ(now(), "Post");
    unit(42, "app.slice/app-gnome-terminal-77.scope");
    EXPECT_EQ(now(), "Terminal");
    unit(42, "app.slice/snap.firefox.firefox-4706fe54-7802-4808-aa7e-ae8b567239e0.scope");
    EXPECT_EQ(now(), "Feuerfuchs");
    machine.file(42, "root/.flatpak-info", "[Application]\nname=org.a.Maps\n");
    EXPECT_EQ(now(), "Karten");
    unit(42, "app.slice/app-flatpak-org.b.Weather-77.scope");
    EXPECT_EQ(now(), "Weather");
}

TEST_F(LinuxApplicationCatalogTest, NamesSandboxesWithoutAnEntry) {
    machine.run({.identifier = 42, .name = "a"})
        .run({.identifier = 43, .name = "b"})
        .run({.identifier = 44, .name = "c"});
    unit(42, "app.slice/app-flatpak-org.b.Weather-77.scope");
    machine.file(43, "root/.flatpak-info", "[Application]\nname=org.c.Chess\n");
    unit(44, "app.slice/snap.code.insiders-4706fe54-7802-4808-aa7e-ae8b567239e0.scope");
    EXPECT_EQ(catalog.applicationOfProcess(42), (ProcessApplication{"", "org.b.Weather", "Weather"}));
    EXPECT_EQ(catalog.applicationOfProcess(43), (ProcessApplication{"", "org.c.Chess", "Chess"}));
    EXPECT_EQ(catalog.applicationOfProcess(44), (ProcessApplication{"", "code_insiders", "code"}));
}

TEST_F(LinuxApplicationCatalogTest, TakesAnAmbiguousUnitOnlyForAnInstalledApplication) {
    machine.run({.identifier = 42, .name = "a"}).run({.identifier = 43, .name = "b"});
    unit(42, "app.slice/app-gnome-org.a.Maps-77.scope");
    unit(43, "app.slice/app-gnome-org.b.Unknown-77.scope");
    EXPECT_EQ(application(42), "Karten");
    EXPECT_EQ(application(43), "none");
}

TEST_F(LinuxApplicationCatalogTest, AnInheritedLaunchSpeaksOfTheParent) {
    machine.run({.identifier = 42, .name = "a"}).run({.identifier = 43, .name = "b"});
    launchedFrom(42, desktop.path("share/applications/mail.desktop"), 41);
    desktop.tree().write("Desktop/own.desktop", "[Desktop Entry]\nType=Application\nName=Eigenes\n");
    launchedFrom(43, desktop.path("Desktop/own.desktop"), 43);
    EXPECT_EQ(application(42), "none");
    EXPECT_EQ(application(43), "Eigenes");
}

TEST_F(LinuxApplicationCatalogTest, FindsAnApplicationThatIsInstalledWhileItRuns) {
    const auto game = desktop.program("lib/game");
    machine.run({.identifier = 42, .name = "game"}).executable(42, game);
    machine.run({.identifier = 43, .name = "browser"}).executable(43, browser);
    EXPECT_EQ(application(42), "none");
    EXPECT_EQ(application(43), "Webbrowser");
    const auto other = processes.accounting(43)->identityStamp;
    desktop.entry("share", "game", "Name=Spiel\nExec=" + game);
    std::filesystem::last_write_time(desktop.path("share/applications"), {}); // however coarse its clock
    desktop.now() += std::chrono::seconds(30);
    EXPECT_EQ(application(42), "Spiel");
    EXPECT_EQ(processes.accounting(43)->identityStamp, other);
}

TEST_F(LinuxApplicationCatalogTest, FollowsNoLinkOfASandbox) {
    machine.run({.identifier = 42, .name = "a"}).run({.identifier = 43, .name = "b"});
    desktop.tree().write("secret", "[Application]\nname=org.c.Chess\n");
    machine.tree().folder("proc/42/root").link("proc/42/root/.flatpak-info", desktop.path("secret"));
    machine.tree().fifo("proc/43/root/.flatpak-info");
    EXPECT_EQ(application(42), "none");
    EXPECT_EQ(application(43), "none");
}

TEST_F(LinuxApplicationCatalogTest, HelpersBelongToTheNearestAncestor) {
    machine.run({.identifier = 40, .name = "browser"}).executable(40, browser);
    machine.run({.identifier = 41, .name = "zygote", .parent = 40});
    machine.run({.identifier = 42, .name = "renderer", .parent = 41});
    EXPECT_EQ(application(42), "Webbrowser");
    // The helpers' answer goes with the parent's: it is another program now.
    machine.executable(40, "/usr/bin/other").run({.identifier = 40, .name = "other"});
    processes.countProcesses();
    processes.accounting(40);
    EXPECT_EQ(application(41), "none");
}

TEST_F(LinuxApplicationCatalogTest, NothingPassesThroughShellsTerminalsAndLeaders) {
    machine.run({.identifier = 40, .name = "terminal"});
    launchedFrom(40, desktop.path("share/applications/terminal.desktop"), 40);
    machine.run({.identifier = 41, .name = "bash", .parent = 40})
        .run({.identifier = 42, .name = "make", .parent = 41})
        .run({.identifier = 43, .name = "systemd", .parent = 40})
        .run({.identifier = 44, .name = "daemon", .parent = 43})
        .run({.identifier = 45, .name = "leader", .parent = 40, .session = 45})
        .run({.identifier = 46, .name = "worker", .parent = 45, .session = 45})
        .run({.identifier = 47, .name = "vim", .parent = 40})
        .run({.identifier = 48, .name = "helper", .parent = 40});
    unit(47, "app.slice/app-org.gnome.Terminal.slice/vte-spawn-4706fe54-7802-4808-aa7e-ae8b567239e0.scope");
    for (const auto process : {41, 42, 43, 44, 45, 46, 47}) {
        EXPECT_EQ(application(process), "none") << process;
    }
    EXPECT_EQ(application(48), "Terminal");
}

TEST_F(LinuxApplicationCatalogTest, ADesktopShellKeepsItsNameToItself) {
    machine.run({.identifier = 40, .name = "desktop-shell", .session = 40}).executable(40, shell);
    unit(40, "session.slice/org.a.Shell.service");
    machine.run({.identifier = 41, .name = "child", .parent = 40});
    EXPECT_EQ(application(40), "Shell");
    EXPECT_EQ(application(41), "none");
    // A service of its own leads a session, too.
    machine.run({.identifier = 50, .name = "browser", .session = 50}).executable(50, browser);
    unit(50, "app.slice/dbus-:1.2-browser@0.service");
    machine.run({.identifier = 51, .name = "child", .parent = 50, .session = 50});
    EXPECT_EQ(application(51), "Webbrowser");
}

/// A desktop, a terminal in it and what people start in one.
class TerminalTest : public LinuxApplicationCatalogTest {
protected:
    struct Style {
        std::string name;
        std::string terminal; ///< its unit
        std::string tab;      ///< the unit of what it starts; empty: the same
        std::string program;  ///< the entry's own; empty: another, as for one that a script starts
    };

    enum : std::int32_t {
        manager = 20,
        desktopShell = 30,
        emulator = 40,
        helper,
        shellOfTab,
        make,
        webBrowser,
        renderer,
        monitor,
        abandoned,
        detached,
        multiplexer,
        daemon,
    };

    void run(const Style& style) {
        const bool isService = style.terminal.ends_with(".service");
        const auto session = isService ? std::int32_t{emulator} : std::int32_t{desktopShell};
        start({.identifier = manager, .name = "systemd", .session = manager}, "init.scope");
        start(
            {.identifier = desktopShell, .name = "desktop-shell", .parent = manager, .session = desktopShell},
            "session.slice/org.a.Shell.service");
        const auto parentOfTerminal = isService ? std::int32_t{manager} : std::int32_t{desktopShell};
        start({.identifier = emulator, .name = "emulator", .parent = parentOfTerminal, .session = session},
              style.terminal);
        machine.executable(emulator, style.program.empty() ? "/usr/bin/python3" : style.program);
        start({.identifier = helper, .name = "emulator-gpu", .parent = emulator, .session = session},
              style.terminal);
        const auto& tab = style.tab.empty() ? style.terminal : style.tab;
        start({.identifier = shellOfTab, .name = "bash", .parent = emulator, .session = shellOfTab}, tab);
        start({.identifier = make, .name = "make", .parent = shellOfTab, .session = shellOfTab}, tab);
        start({.identifier = webBrowser, .name = "browser", .parent = shellOfTab, .session = shellOfTab},
              tab);
        machine.executable(webBrowser, browser);
        start({.identifier = renderer, .name = "r", .parent = webBrowser, .session = shellOfTab}, tab);
        start({.identifier = monitor, .name = "htop", .parent = emulator, .session = monitor}, tab);
        // Their shells have gone, or run on.
        start({.identifier = abandoned, .name = "job", .parent = manager, .session = 4711}, tab);
        start({.identifier = detached, .name = "job", .parent = manager, .session = shellOfTab}, tab);
        start({.identifier = multiplexer, .name = "tmux: server", .parent = manager, .session = multiplexer},
              tab);
        start({.identifier = daemon, .name = "job", .parent = manager, .session = daemon}, tab);
    }

    void start(ScriptedProcess process, std::string_view below) {
        process.startTicks = ++started;
        machine.run(process);
        unit(process.identifier, below);
    }
};

TEST_F(TerminalTest, OwnsNothingThatItsShellsStart) {
    const auto program = desktop.program("lib/emulator");
    desktop.entry("share", "emulator", "Name=Emulator\nCategories=System;TerminalEmulator;\nExec=" + program)
        .entry("share", "emulator_emulator", "Name=Emulator\nCategories=TerminalEmulator");
    desktop.now() += std::chrono::seconds(30);
    const std::string uuid = "4706fe54-7802-4808-aa7e-ae8b567239e0";
    for (const auto& style : std::vector<Style>{
             {"units beside it", "app.slice/emulator-server.service",
              "app.slice/vte-spawn-" + uuid + ".scope", program},
             {"units beside its own", "app.slice/app-gnome-emulator-40.scope",
              "app.slice/ptyxis-spawn-" + uuid + ".scope", ""},
             {"parts of its unit", "app.slice/app-emulator-40.scope/main.scope",
              "app.slice/app-emulator-40.scope/tab(42).scope", ""},
             {"one scope", "app.slice/app-emulator-40.scope", "", program},
             {"one scope, a script", "app.slice/app-Hyprland-emulator-8f3a2b1c.scope", "", ""},
             {"one service", "app.slice/app-emulator@0123abcd.service", "", program},
             {"one service, a script", "app.slice/app-emulator@0123abcd.service", "", ""},
             {"a snap", "app.slice/snap.emulator.emulator-" + uuid + ".scope", "", ""},
             {"the session's scope", "../session-2.scope", "", program},
         }) {
        run(style);
        for (const auto process : {emulator, helper}) {
            EXPECT_EQ(application(process), "Emulator") << style.name << ": " << process;
        }
        for (const auto process : {webBrowser, renderer}) {
            EXPECT_EQ(application(process), "Webbrowser") << style.name << ": " << process;
        }
        if (!style.terminal.ends_with(".service")) { // where it looks like the service itself
            EXPECT_EQ(application(daemon), "none") << style.name;
        }
        for (const auto process : {shellOfTab, make, monitor, abandoned, detached, multiplexer}) {
            EXPECT_EQ(application(process), "none") << style.name << ": " << process;
        }
    }
}

TEST_F(LinuxApplicationCatalogTest, OtherUnitsDecideForTheShellsInThem) {
    machine.run({.identifier = 40, .name = "sh"}).run({.identifier = 41, .name = "wrapped", .parent = 40});
    for (const auto process : {40, 41}) {
        unit(process, "app.slice/app-gnome-mail-40.scope");
        EXPECT_EQ(application(process), "Post") << "a script that starts the application";
    }
}

TEST_F(LinuxApplicationCatalogTest, ServicesOfTheSystemAreNone) {
    machine.run({.identifier = 40, .name = "browser"}).executable(40, browser);
    machine.file(40, "cgroup", "0::/system.slice/browser.service\n");
    machine.run({.identifier = 41, .name = "child", .parent = 40});
    const auto own = ::geteuid() == 0 ? "none" : "Webbrowser"; // without root nobody runs as root here
    EXPECT_EQ(application(40), own);
    EXPECT_EQ(application(41), own);
    machine.run({.identifier = 42, .name = "daemon"});
    machine.file(42, "cgroup", "0::/system.slice/snap.code.code.service\n");
    EXPECT_EQ(application(42), ::geteuid() == 0 ? "none" : "code");
    if (::geteuid() == 0) { // a session that a display manager without PAM started
        const auto folder = machine.tree().path() / ScriptedMachine::folder(40);
        ASSERT_EQ(::chown(folder.c_str(), 4321, static_cast<gid_t>(-1)), 0);
        machine.run({.identifier = 40, .name = "browser", .startTicks = 77});
        EXPECT_EQ(application(40), "Webbrowser");
    }
}

TEST_F(LinuxApplicationCatalogTest, FindsTheProgramInsideItsWrapping) {
    machine.run({.identifier = 40, .name = "browser"})
        .executable(40, desktop.path("lib/browser/.browser-wrapped"));
    machine.run({.identifier = 41, .name = "browser"}).executable(41, "/tmp/.mount_browXY/usr/bin/browser");
    machine.file(41, "environ", "APPDIR=/tmp/.mount_browXY" + std::string(1, '\0') + "APPIMAGE=" + browser);
    EXPECT_EQ(application(40), "Webbrowser");
    EXPECT_EQ(application(41), "Webbrowser");
}

TEST_F(LinuxApplicationCatalogTest, SaysNothingOfKernelThreadsCirclesAndTheGone) {
    machine.run({.identifier = 9, .name = "kthread", .parent = 2, .flags = 0x00200000})
        .executable(9, browser);
    machine.run({.identifier = 42, .name = "a", .parent = 43})
        .run({.identifier = 43, .name = "b", .parent = 42});
    machine.run({.identifier = 44, .name = "orphan", .parent = 77});
    for (const auto process : {9, 42, 44, 4711}) {
        EXPECT_EQ(application(process), "none") << process;
    }
}

TEST(ApplicationHints, ReadsTheSandboxFileAndTheEnvironment) {
    EXPECT_EQ(flatpakApplication("[Application]\nname=org.a.Maps\nruntime=x\n\n[Instance]\nname=no\n"),
              "org.a.Maps");
    for (const auto* const text :
         {"[Runtime]\nname=org.a.Platform\n", "[Application]\nname=\n", "noise", ""}) {
        EXPECT_FALSE(flatpakApplication(text)) << text;
    }
    using namespace std::string_view_literals;
    const auto good = "X=GIO_LAUNCHED_DESKTOP_FILE=/no\0GIO_LAUNCHED_DESKTOP_FILE=/a.desktop\0"
                      "GIO_LAUNCHED_DESKTOP_FILE_PID=42"sv; // the last one unfinished
    EXPECT_EQ(launchedDesktopFile(good, 42), "/a.desktop");
    EXPECT_FALSE(launchedDesktopFile(good, 4));
    EXPECT_FALSE(launchedDesktopFile("GIO_LAUNCHED_DESKTOP_FILE=a\0GIO_LAUNCHED_DESKTOP_FILE_PID=4"sv, 4));
    EXPECT_FALSE(launchedDesktopFile("\0\0="sv, 4));
    const auto image = "APPDIR=/tmp/.mount_a\0APPIMAGE=/home/a.AppImage\0"sv;
    EXPECT_EQ(appImageFile(image, "/tmp/.mount_a/usr/bin/a"), "/home/a.AppImage");
    EXPECT_FALSE(appImageFile(image, "/usr/bin/browser")) << "started by it, and no part of it";
    EXPECT_FALSE(appImageFile(image, "/tmp/.mount_ab/a"));
    EXPECT_FALSE(appImageFile("APPDIR=/tmp/.mount_a\0"sv, "/tmp/.mount_a/a"));
}

} // namespace
} // namespace cindertop::linux_platform
