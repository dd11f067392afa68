#include "DesktopTree.h"
#include "PrivateBus.h"
#include "ScriptedProcesses.h"
#include "platform/linux/FileDescriptor.h"
#include "platform/linux/LinuxRunningApplications.h"

#include <gtest/gtest.h>
#include <systemd/sd-bus.h>

#include <array>
#include <stdexcept>
#include <stop_token>
#include <string>
#include <thread>
#include <tuple>
#include <utility>
#include <vector>

#include <sys/wait.h>
#include <unistd.h>

namespace cindertop::linux_platform {
namespace {

constexpr std::int32_t none = 8'000'000; ///< above the kernel's largest identifier: no signal can hit

class RunningApplicationsTest : public testing::Test {
protected:
    RunningApplicationsTest() {
        desktop.entry("share", "maps", "Name=Maps").entry("share", "shell", "Name=Shell");
    }

    /// A process that was started as an application, in a unit of the user's manager.
    void run(const ScriptedProcess& process, const std::string& application,
             const std::string& unit = {}) const {
        machine.run(process);
        machine.file(process.identifier, "environ",
                     "GIO_LAUNCHED_DESKTOP_FILE=" + entry(application) + '\0' +
                         "GIO_LAUNCHED_DESKTOP_FILE_PID=" + std::to_string(process.identifier) + '\0');
        machine.file(process.identifier, "cgroup",
                     "0::/user@" + std::to_string(::geteuid()) + ".service/" + unit + "\n");
    }

    std::string entry(const std::string& application) const {
        return desktop.path("share/applications/" + application + ".desktop");
    }

    std::unique_ptr<ApplicationGroups> groups() const {
        return std::make_unique<ApplicationGroups>(machine.tree().roots(), desktop.entries(),
                                                   machine.clocks());
    }

    std::int32_t main(const std::string& application) const {
        const auto found = LinuxRunningApplications(groups()).findByBundleIdentifier(application);
        return found ? found->processIdentifier : none;
    }

    ScriptedMachine machine;
    DesktopTree desktop;
};

TEST_F(RunningApplicationsTest, AreFoundByIdentifierAndPath) {
    run({.identifier = none + 1, .name = "maps"}, "maps");
    const LinuxRunningApplications applications(groups());
    const RunningApplication maps{none + 1, "maps", entry("maps")};
    EXPECT_EQ(applications.findByBundleIdentifier("maps"), maps);
    EXPECT_EQ(applications.findByBundlePath(entry("maps")), maps);
    EXPECT_EQ(applications.findByBundleIdentifier("shell"), std::nullopt);
    EXPECT_EQ(applications.findByBundleIdentifier(""), std::nullopt);
    EXPECT_EQ(applications.findByBundlePath(""), std::nullopt);
}

TEST_F(RunningApplicationsTest, MainIsTheOldestWithAParentOutside) {
    run({.identifier = none + 1, .name = "renderer", .parent = none + 3, .startTicks = 1}, "maps");
    run({.identifier = none + 2, .name = "second", .startTicks = 9}, "maps");
    run({.identifier = none + 3, .name = "first", .startTicks = 8}, "maps");
    run({.identifier = none + 4, .name = "dead", .startTicks = 7, .state = 'Z'}, "maps");
    run({.identifier = none + 5, .name = "thread", .startTicks = 6, .flags = 0x00200000}, "maps");
    run({.identifier = none + 6, .name = "foreign", .startTicks = 5}, "maps");
    if (::chown((machine.tree().path() / ScriptedMachine::folder(none + 6)).c_str(), 4321,
                static_cast<gid_t>(-1)) != 0) {
        machine.end(none + 6); // only root gives folders away
    }
    EXPECT_EQ(main("maps"), none + 3);
    machine.end(none + 3);
    run({.identifier = none + 1, .name = "renderer", .parent = none + 2, .startTicks = 1}, "maps");
    const auto found = groups();
    const auto member = found->withIdentifier("maps").value().main();
    EXPECT_EQ(member.processIdentifier, none + 2);
    EXPECT_TRUE(found->isStillThere(member));
    run({.identifier = none + 2, .name = "second", .startTicks = 10}, "maps");
    EXPECT_FALSE(found->isStillThere(member)) << "another process of the same number";
}

TEST_F(RunningApplicationsTest, PartsOfTheDesktopAreUntouchable) {
    struct Case {
        std::string name;
        std::string unit;
        bool isProtected;
    };

    for (const auto& [name, unit, isProtected] : std::to_array<Case>({
             {"maps", "app.slice/app-maps-1.scope", false},
             {"maps", "../session-2.scope", false}, // where desktops without units keep everything
             {"maps", "session.slice/maps.service", true},
             {"gnome-shell", "", true},
             {"gnome-session-b", "", true}, // as the kernel cuts it
             {".plasmashell-wr", "", true}, // behind a wrapper of Nix
             {".sway-real", "", true},      // and of Guix
             {".sway-other", "", false},
             {"gnome-session", "", false},
         })) {
        run({.identifier = none + 1, .name = name}, "maps", unit);
        EXPECT_EQ(groups()->withIdentifier("maps")->main().isProtected, isProtected) << name << unit;
    }
    run({.identifier = ::getpid(), .name = "self"}, "shell");
    EXPECT_TRUE(groups()->withIdentifier("shell")->main().isProtected);
    LinuxRunningApplications applications(groups());
    const auto self = applications.findByBundleIdentifier("shell").value();
    EXPECT_FALSE(applications.terminate(self));
    EXPECT_FALSE(applications.forceTerminate(self));
}

TEST_F(RunningApplicationsTest, ForceEndsUnitsThatHoldNothingElse) {
    run({.identifier = none + 1, .name = "maps"}, "maps", "app.slice/app-maps-1.scope");
    run({.identifier = none + 2, .name = "helper"}, "maps", "app.slice/app-maps-1.scope");
    run({.identifier = none + 3, .name = "other"}, "maps", "app.slice/app-gnome-maps-7.scope");
    run({.identifier = none + 4, .name = "plain"}, "maps", "app.slice/maps.service");
    run({.identifier = none + 5, .name = "mixed"}, "maps", "app.slice/app-mixed-1.scope");
    run({.identifier = none + 6, .name = "sway"}, "shell", "app.slice/app-mixed-1.scope");
    run({.identifier = none + 7, .name = "child", .parent = none + 6}, "shell",
        "app.slice/app-child-1.scope");
    run({.identifier = none + 8, .name = "with bus"}, "maps", "app.slice/app-bus-1.scope");
    run({.identifier = none + 9, .name = "dbus-daemon"}, "maps", "app.slice/app-bus-1.scope");
    std::vector<std::string> ended;
    bool isManagerWilling = true;
    LinuxRunningApplications applications(groups(), [&](const std::string& unit) {
        ended.push_back(unit);
        return isManagerWilling;
    });
    const auto force = [&](const char* application) {
        ended.clear();
        return applications.forceTerminate(applications.findByBundleIdentifier(application).value());
    };
    EXPECT_TRUE(force("maps"));
    EXPECT_EQ(ended, (std::vector<std::string>{"app-maps-1.scope", "app-gnome-maps-7.scope"}));
    EXPECT_FALSE(force("shell"));
    EXPECT_TRUE(ended.empty()) << ended.front();
    isManagerWilling = false;
    EXPECT_FALSE(force("maps")) << "no signal can reach them";
    EXPECT_EQ(ended.size(), 1U) << "asked again although it may hang";
}

TEST_F(RunningApplicationsTest, WhatATerminalRunsIsEndedWithoutIt) {
    desktop.entry("share", "terminal", "Name=Terminal\nCategories=TerminalEmulator");
    const std::string scope = "app.slice/app-terminal-1.scope";
    std::vector<std::string> ended;
    const auto force = [&](const char* application) {
        ended.clear();
        LinuxRunningApplications applications(
            groups(), [&](const std::string& unit) { return ended.push_back(unit), true; });
        applications.forceTerminate(applications.findByBundleIdentifier(application).value());
        return ended;
    };
    run({.identifier = none + 1, .name = "terminal"}, "terminal", scope);
    EXPECT_EQ(force("terminal"), std::vector<std::string>{"app-terminal-1.scope"});
    run({.identifier = none + 2, .name = "maps", .parent = none + 4, .session = none + 4}, "maps", scope);
    EXPECT_EQ(main("maps"), none + 2);
    EXPECT_EQ(force("maps"), std::vector<std::string>{});
    EXPECT_EQ(force("terminal"), std::vector<std::string>{});
    machine.end(none + 2);
    for (const auto* const part : {"", "/tab(4).scope"}) {
        run({.identifier = none + 4, .name = "bash", .parent = none + 1, .session = none + 4}, "gone",
            scope + part);
        EXPECT_EQ(force("terminal"), std::vector<std::string>{}) << "a shell in it is no part of it";
    }
    run({.identifier = none + 4, .name = "bash", .state = 'Z'}, "gone", scope);
    EXPECT_EQ(force("terminal"), std::vector<std::string>{"app-terminal-1.scope"})
        << "a zombie keeps nothing";
    machine.run({.identifier = none + 4, .name = "other"});
    machine.file(none + 4, "cgroup", "0::/user@4321.service/" + scope + "\n");
    EXPECT_EQ(force("terminal"), std::vector<std::string>{"app-terminal-1.scope"})
        << "of another user's manager";
}

/// A live process that says it was started as an application. It reads from a pipe until a signal or the end
/// of this object ends it.
class LiveApplication {
public:
    explicit LiveApplication(const std::string& entry) {
        std::array<int, 2> input{};
        std::array<int, 2> started{};
        if (::pipe2(input.data(), O_CLOEXEC) != 0 || ::pipe2(started.data(), O_CLOEXEC) != 0) {
            throw std::runtime_error("no pipe");
        }
        identifier_ = ::fork();
        if (identifier_ == 0) {
            ::dup2(input[0], STDIN_FILENO);
            const auto file = "GIO_LAUNCHED_DESKTOP_FILE=" + entry;
            const auto process = "GIO_LAUNCHED_DESKTOP_FILE_PID=" + std::to_string(::getpid());
            const std::array<const char*, 3> environment{file.c_str(), process.c_str(), nullptr};
            ::execle("/bin/cat", "cat", nullptr, environment.data());
            ::_exit(127);
        }
        ::close(input[0]);
        input_ = FileDescriptor(input[1]);
        ::close(started[1]);
        char byte = 0;
        std::ignore = ::read(started[0], &byte, 1); // ends with the exec
        ::close(started[0]);
    }

    ~LiveApplication() {
        input_ = {};
        if (identifier_ > 0) {
            ::waitpid(identifier_, nullptr, 0);
        }
    }

    LiveApplication(const LiveApplication&) = delete;
    LiveApplication& operator=(const LiveApplication&) = delete;

    std::int32_t identifier() const { return identifier_; }

    /// Waits for its end; the signal that ended it, or 0.
    int endedBy() {
        int status = 0;
        ::waitpid(std::exchange(identifier_, -1), &status, 0);
        return WIFSIGNALED(status) ? WTERMSIG(status) : 0;
    }

private:
    FileDescriptor input_;
    pid_t identifier_ = -1;
};

TEST_F(RunningApplicationsTest, SignalsReachTheirProcesses) {
    std::vector<std::string> ended;
    LinuxRunningApplications applications(
        std::make_unique<ApplicationGroups>(Roots{}, desktop.entries()),
        [&](const std::string& unit) { return ended.push_back(unit), false; });
    LiveApplication first(entry("maps"));
    LiveApplication second(entry("maps"));
    LiveApplication third(entry("maps"));
    const auto asked = applications.findByBundleIdentifier("maps");
    ASSERT_TRUE(asked);
    EXPECT_EQ(asked->processIdentifier, first.identifier());
    EXPECT_TRUE(applications.terminate(*asked));
    EXPECT_EQ(first.endedBy(), SIGTERM);
    EXPECT_FALSE(applications.terminate(*asked)) << "its place was taken";
    EXPECT_TRUE(applications.forceTerminate({second.identifier(), std::nullopt, entry("maps")}));
    EXPECT_EQ(second.endedBy(), SIGKILL);
    EXPECT_EQ(third.endedBy(), SIGKILL);
    EXPECT_EQ(applications.findByBundleIdentifier("maps"), std::nullopt);
}

/// Answers for the user's service manager on a bus and remembers the last call.
class ScriptedManager {
public:
    explicit ScriptedManager(const std::string& address) {
        sd_bus_new(&bus_);
        sd_bus_set_address(bus_, address.c_str());
        sd_bus_set_bus_client(bus_, 1);
        sd_bus_start(bus_);
        sd_bus_add_object(bus_, nullptr, "/org/freedesktop/systemd1", onCall, this);
        if (sd_bus_request_name(bus_, "org.freedesktop.systemd1", 0) < 0) {
            throw std::runtime_error("no name on the bus");
        }
        thread_ = std::jthread([this](const std::stop_token& stop) {
            constexpr std::uint64_t microseconds = 20'000;
            while (!stop.stop_requested()) {
                if (sd_bus_process(bus_, nullptr) == 0) {
                    sd_bus_wait(bus_, microseconds);
                }
            }
        });
    }

    ~ScriptedManager() {
        end();
        sd_bus_flush_close_unref(bus_);
    }

    ScriptedManager(const ScriptedManager&) = delete;
    ScriptedManager& operator=(const ScriptedManager&) = delete;

    /// No call is answered any more; "unit whom signal" of the last one.
    std::string end() {
        thread_ = {};
        return lastCall_;
    }

private:
    static int onCall(sd_bus_message* call, void* manager, sd_bus_error* /*error*/) {
        const char* unit = nullptr;
        const char* whom = nullptr;
        std::int32_t signal = 0;
        if (sd_bus_message_is_method_call(call, "org.freedesktop.systemd1.Manager", "KillUnit") <= 0 ||
            sd_bus_message_read(call, "ssi", &unit, &whom, &signal) < 0) {
            return 0;
        }
        static_cast<ScriptedManager*>(manager)->lastCall_ =
            std::string(unit) + ' ' + whom + ' ' + std::to_string(signal);
        return std::string_view(unit).starts_with("app-")
                   ? sd_bus_reply_method_return(call, "")
                   : sd_bus_reply_method_errorf(call, "org.freedesktop.systemd1.NoSuchUnit", "not loaded");
    }

    sd_bus* bus_ = nullptr;
    std::string lastCall_;
    std::jthread thread_;
};

TEST(UserManager, EndsAUnitOverTheBus) {
    PrivateBus daemon;
    const auto killUnit = killByUserManager(daemon.address());
    EXPECT_FALSE(killUnit("app-a-1.scope")) << "no bus";
    daemon.start();
    EXPECT_FALSE(killUnit("app-a-1.scope")) << "no manager";
    ScriptedManager manager(daemon.address());
    EXPECT_TRUE(killUnit("app-a-1.scope"));
    EXPECT_FALSE(killUnit("gone.scope"));
    EXPECT_TRUE(killUnit("app-a\\x2db-1.scope"));
    EXPECT_EQ(manager.end(), "app-a\\x2db-1.scope all 9");
}

} // namespace
} // namespace cindertop::linux_platform
