#include "ScriptedProcesses.h"
#include "platform/linux/LinuxProcessTable.h"
#include "platform/linux/ProcessStat.h"
#include "support/Text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <filesystem>
#include <limits>
#include <span>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace cindertop::linux_platform {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

template <std::size_t room>
std::string textOf(const std::array<char, room>& bytes) {
    return std::string(untilZeroByte({bytes.data(), bytes.size()}));
}

class LinuxProcessTableTest : public testing::Test {
protected:
    /// The listing of a new census.
    std::vector<std::int32_t> list() {
        std::vector<std::int32_t> identifiers(static_cast<std::size_t>(table.countProcesses()));
        identifiers.resize(static_cast<std::size_t>(table.listProcesses(identifiers)));
        return identifiers;
    }

    /// What a new census says of one process.
    std::optional<ProcessAccounting> census(std::int32_t processIdentifier) {
        list();
        return table.accounting(processIdentifier);
    }

    std::uint64_t stamp(std::int32_t processIdentifier) {
        const auto answer = census(processIdentifier);
        return answer ? answer->identityStamp : 0;
    }

    ScriptedMachine machine;
    LinuxProcessTable table{machine.tree().roots(), machine.clocks()};
};

TEST_F(LinuxProcessTableTest, ListsTheProcessesInOrderAndInTheRoomGiven) {
    machine.run({.identifier = 30, .name = "c"})
        .run({.identifier = 4, .name = "a"})
        .run({.identifier = 7, .name = "b"});
    for (const auto* const other :
         {"proc/self", "proc/007", "proc/12x", "proc/99999999999", "proc/sys", "proc/0"}) {
        machine.tree().folder(other);
    }
    EXPECT_EQ(table.countProcesses(), 3);
    std::array<std::int32_t, 2> small{};
    EXPECT_EQ(table.listProcesses(small), 2);
    EXPECT_EQ(small, (std::array{4, 7}));
    machine.end(7);
    EXPECT_EQ(list(), (std::vector{4, 30}));
}

TEST_F(LinuxProcessTableTest, SaysWhatTheLatestCensusSaw) {
    const auto status = [&] { return table.status().reason.substr(machine.tree().path().string().size()); };
    machine.run({.identifier = 4, .name = "a"});
    EXPECT_EQ(status(), "/proc") << "without a census";
    table.countProcesses();
    table.accounting(4);
    EXPECT_EQ(status(), "/proc, other users' hidden") << "the first process is";
    machine.run({.identifier = 1, .name = "bwrap"});
    table.countProcesses();
    table.accounting(1);
    EXPECT_EQ(status(), "/proc, this sandbox only");
    machine.run({.identifier = 1, .name = "systemd"});
    table.accounting(1);
    EXPECT_EQ(status(), "/proc");
    machine.end(1).end(4);
    EXPECT_EQ(status(), "/proc") << "listed again";
    table.countProcesses();
    EXPECT_EQ(status(), "/proc: lists no process");
}

TEST_F(LinuxProcessTableTest, DescribesAProcess) {
    machine.run({.identifier = 42, .name = "gnome-terminal-", .parent = 7});
    machine.file(42, "cmdline",
                 std::string_view("/usr/libexec/gnome-terminal-server-of-a-very-long-name\0x", 56));
    machine.executable(42, "/usr/libexec/gnome-terminal-server (deleted)");
    machine.times().cpuTimes[42] = seconds(3) + milliseconds(5);
    const auto process = census(42);
    ASSERT_TRUE(process);
    EXPECT_EQ(process->flags, 0U);
    EXPECT_EQ(process->parentProcessIdentifier, 7);
    EXPECT_EQ(process->realUserIdentifier, ::geteuid());
    EXPECT_EQ(textOf(process->shortName), "gnome-terminal-");
    EXPECT_EQ(textOf(process->longName), "gnome-terminal-server-of-a-very-");
    EXPECT_EQ(process->startSeconds, 1'000'123U);
    EXPECT_EQ(process->startMicroseconds, 450'000U);
    EXPECT_EQ(process->totalUserTime, 3'005'000'000U);
    EXPECT_EQ(process->totalSystemTime, 0U);
    EXPECT_NE(process->identityStamp, 0U);
    EXPECT_EQ(table.executablePath(42), "/usr/libexec/gnome-terminal-server");
}

TEST_F(LinuxProcessTableTest, MarksKernelThreadsAndAsksThemNoFile) {
    machine.run(
        {.identifier = 9, .name = "kworker/0:1-events_power_efficient", .parent = 2, .flags = 0x04208060});
    machine.executable(9, "/bin/false");
    const auto worker = census(9);
    EXPECT_EQ(worker->flags, ProcessAccounting::systemFlag);
    EXPECT_EQ(textOf(worker->longName), "kworker/0:1");
    EXPECT_FALSE(table.executablePath(9));
    machine.run({.identifier = 9, .name = "kworker/0:1-flush", .parent = 2, .flags = 0x04208060});
    EXPECT_EQ(stamp(9), worker->identityStamp);
}

TEST_F(LinuxProcessTableTest, OpensNoFileOfAnIdleProcess) {
    machine.run({.identifier = 42, .name = "sleep"});
    const auto before = census(42);
    machine.tree().remove("proc/42/stat");
    machine.times().now += std::chrono::hours(5); // someone set the clock
    const auto after = census(42);
    ASSERT_TRUE(after);
    EXPECT_EQ(after->identityStamp, before->identityStamp);
    EXPECT_EQ(textOf(after->shortName), "sleep");
    EXPECT_EQ(after->startSeconds, before->startSeconds);
    EXPECT_EQ(machine.times().cpuTimeReads, 2);
}

TEST_F(LinuxProcessTableTest, StampChangesWithWhatAProcessIs) {
    const ScriptedProcess process{.identifier = 42, .name = "sh", .parent = 7, .startStack = 1000};
    const auto changed = [&](auto change) {
        auto other = process;
        change(other);
        return other;
    };
    for (const auto& other : {
             changed([](auto& one) { one.name = "make"; }),     // an exec
             changed([](auto& one) { one.startStack = 2000; }), // an exec of a program of the same name
             changed([](auto& one) { one.parent = 1; }),        //
             changed([](auto& one) { one.startTicks = 99; }),   // another process
         }) {
        machine.run(process);
        const auto before = stamp(42);
        EXPECT_EQ(stamp(42), before);
        machine.run(other);
        const auto after = census(42);
        ASSERT_TRUE(after);
        EXPECT_NE(after->identityStamp, before) << other.name;
        EXPECT_EQ(textOf(after->longName), other.name);
        EXPECT_EQ(after->parentProcessIdentifier, other.parent);
    }
}

TEST_F(LinuxProcessTableTest, AChildOfAVanishedParentIsReadAgain) {
    machine.run({.identifier = 42, .name = "parent"}).run({.identifier = 43, .name = "child", .parent = 42});
    const auto before = stamp(43);
    machine.file(43, "stat", statLine({.identifier = 43, .name = "child", .parent = 1})); // takes no CPU time
    EXPECT_EQ(stamp(43), before);
    machine.end(42);
    const auto after = census(43);
    EXPECT_EQ(after->parentProcessIdentifier, 1);
    EXPECT_NE(after->identityStamp, before);
    EXPECT_EQ(stamp(43), after->identityStamp);
}

TEST_F(LinuxProcessTableTest, AChildIsReadAgainWhenItsParentDiesOrIsAnotherProgramNow) {
    for (const ScriptedProcess& parent : {
             ScriptedProcess{.identifier = 42, .name = "parent", .state = 'Z'},
             ScriptedProcess{.identifier = 42, .name = "other"},
             ScriptedProcess{.identifier = 42, .name = "parent", .startTicks = 77'777},
         }) {
        machine.run({.identifier = 42, .name = "parent"})
            .run({.identifier = 43, .name = "child", .parent = 42});
        const auto before = stamp(43);
        machine.file(43, "stat", statLine({.identifier = 43, .name = "child", .parent = 5}));
        machine.run(parent);
        census(42);
        EXPECT_EQ(census(43)->parentProcessIdentifier, 5);
        EXPECT_NE(stamp(43), before);
    }
}

TEST_F(LinuxProcessTableTest, AProcessThatVanishesBetweenTwoReadsIsAbsent) {
    machine.run({.identifier = 42, .name = "a"}).run({.identifier = 43, .name = "b"});
    EXPECT_EQ(list(), (std::vector{42, 43}));
    machine.times().cpuTimes.erase(42); // its clock is gone
    machine.tree().remove("proc/43");   // its folder is gone
    EXPECT_FALSE(table.accounting(42));
    EXPECT_FALSE(table.accounting(43));
    EXPECT_EQ(table.known(43), nullptr);
    EXPECT_FALSE(table.executablePath(43));
}

TEST_F(LinuxProcessTableTest, AYoungProcessIsLookedAtOnceMore) {
    machine.times().sinceBoot = seconds(124); // 0.55 s after its start
    machine.run({.identifier = 42, .name = "app"});
    const auto young = stamp(42);
    machine.run({.identifier = 42, .name = "app"});
    EXPECT_EQ(stamp(42), young);
    machine.times().sinceBoot = seconds(130); // and idle since
    const auto settled = stamp(42);
    EXPECT_NE(settled, young);
    machine.file(42, "stat", "unread");
    EXPECT_EQ(stamp(42), settled);
    machine.run({.identifier = 42, .name = "app"});
    EXPECT_EQ(stamp(42), settled);
}

TEST_F(LinuxProcessTableTest, ChurnLeavesNeitherStrangersNorLosses) {
    std::map<std::int32_t, std::uint64_t> alive;
    std::uint64_t random = 12345;
    for (int round = 0; round < 60; ++round) {
        for (int change = 0; change < 4; ++change) {
            random = random * 6364136223846793005ULL + 1442695040888963407ULL;
            const auto identifier = static_cast<std::int32_t>(10 + (random >> 33U) % 40);
            if (alive.erase(identifier) > 0) {
                machine.end(identifier);
            } else {
                alive[identifier] = random >> 40U;
                machine.run({.identifier = identifier,
                             .name = "p" + std::to_string(random >> 40U),
                             .startTicks = 1000 + static_cast<std::uint64_t>(round)});
                machine.times().cpuTimes[identifier] = milliseconds(random >> 40U);
            }
        }
        const auto listed = list();
        ASSERT_EQ(listed.size(), alive.size());
        for (const auto identifier : listed) {
            ASSERT_EQ(textOf(table.accounting(identifier)->longName),
                      "p" + std::to_string(alive.at(identifier)));
        }
    }
    EXPECT_EQ(table.knownCount(), alive.size());
}

TEST(ProcessStat, TakesTheFieldsBehindAnyName) {
    for (const std::string name :
         {"bash", "a b", "a) S 1 (b", ")", "((", "", "line\nend", "\xff\xfe", "kworker/u8:2-flush"}) {
        EXPECT_EQ(parseProcessStat(statLine({.identifier = 42,
                                             .name = name,
                                             .parent = 7,
                                             .session = 9,
                                             .startTicks = 18446744073709551615ULL,
                                             .startStack = 140724117406912,
                                             .state = 'R',
                                             .flags = 0x00200040})),
                  (ProcessStat{.name = name,
                               .state = 'R',
                               .parent = 7,
                               .session = 9,
                               .flags = 0x00200040,
                               .startTicks = 18446744073709551615ULL,
                               .startStack = 140724117406912}))
            << name;
    }
}

TEST(ProcessStat, RefusesWhatIsNoLine) {
    const auto line = statLine({.identifier = 42, .name = "x"});
    for (const auto& broken : {
             std::string(),
             std::string(")("),
             std::string("42 (x)"),
             std::string("42 (x) "),
             line.substr(0, line.find(" 2998272")), // ends behind the start time
             statLine({.identifier = 42, .name = "x", .state = ' '}),
             std::string("42 (x) S one 7 1 0 -1 0 1 2 3 4 5 6 7 8 20 0 1 0 5 2 3 4 1 1 0 "),
             std::string("42 (x) S 99999999999 7 1 0 -1 0 1 2 3 4 5 6 7 8 20 0 1 0 5 2 3 4 1 1 0 "),
             std::string("42 (x) S 1 7 1 0 -1 -4 1 2 3 4 5 6 7 8 20 0 1 0 5 2 3 4 1 1 0 "),
             std::string("42 (x) S 1 7 1 0 -1 0 1 2 3 4 5 6 7 8 20 0 1 0 -5 2 3 4 1 1 0 "),
             std::string("42 (x) S 1 7 1 0 -1 0 1 2 3 4 5 6 7 8 20 0 1 0 18446744073709551616 2 3 4 1 1 0 "),
         }) {
        EXPECT_FALSE(parseProcessStat(broken)) << broken;
    }
}

TEST(ProcessStat, CompletesNamesThatTheKernelCut) {
    struct Case {
        std::string_view shortName;
        std::string_view commandLine;
        std::string_view name;
    };

    using namespace std::string_view_literals;
    for (const auto& [shortName, commandLine, name] : std::to_array<Case>({
             {"gnome-terminal-", "/usr/libexec/gnome-terminal-server\0--x"sv, "gnome-terminal-server"},
             {"localsearch-ext", "localsearch-extractor-3\0"sv, "localsearch-extractor-3"},
             {"Isolated Web Co", "/usr/lib/firefox/firefox\0-contentproc"sv, "Isolated Web Co"},
             {"gnome-terminal-", "", "gnome-terminal-"},
             {"bash", "/bin/bash-static\0"sv, "bash"}, // not cut
             {"chromium-browse", "/usr/lib/c/chromium-browser --type=zygote --dir=/a/b"sv,
              "chromium-browser"},
             {"electron-applic", "/opt/e/electron-application /opt/e/app.asar"sv, "electron-application"},
             {"Sheets - Office", "/opt/s/Sheets - Office Suite\0/home/a"sv, "Sheets - Office Suite"},
             {"fifteen-bytes-x", "/bin/fifteen-bytes-x/\0"sv, "fifteen-bytes-x"},
         })) {
        EXPECT_EQ(uncutName(shortName, commandLine), name);
    }
}

TEST(ProcessStat, LeavesOutWhatAKernelWorkerDoesNow) {
    for (const auto& [name, steady] : std::to_array<std::array<std::string_view, 2>>({
             {"kworker/0:1-events", "kworker/0:1"},
             {"kworker/u8:2+flush-259:0", "kworker/u8:2"},
             {"kworker/1:0H", "kworker/1:0H"},
             {"kworker/R-rcu_gp", "kworker/R-rcu_gp"},
             {"irq/24-pciehp", "irq/24-pciehp"},
         })) {
        EXPECT_EQ(steadyName(name), steady);
    }
}

/// A child that waits for its end.
class WaitingChild {
public:
    WaitingChild() : identifier_(::fork()) {
        if (identifier_ == 0) {
            ::prctl(PR_SET_PDEATHSIG, SIGKILL);
            ::pause();
            ::_exit(0);
        }
    }

    ~WaitingChild() {
        if (identifier_ > 0) {
            die();
            reap();
        }
    }

    WaitingChild(const WaitingChild&) = delete;
    WaitingChild& operator=(const WaitingChild&) = delete;

    pid_t identifier() const { return identifier_; }

    /// Waits until it is dead, but leaves it as a zombie.
    void die() const {
        ::kill(identifier_, SIGKILL);
        siginfo_t information{};
        ::waitid(P_PID, static_cast<id_t>(identifier_), &information, WEXITED | WNOWAIT);
    }

    void reap() { ::waitpid(std::exchange(identifier_, -1), nullptr, 0); }

private:
    pid_t identifier_;
};

std::vector<std::int32_t> listing(LinuxProcessTable& table) {
    std::vector<std::int32_t> identifiers(static_cast<std::size_t>(std::max(table.countProcesses(), 0)));
    identifiers.resize(static_cast<std::size_t>(std::max(table.listProcesses(identifiers), 0)));
    return identifiers;
}

std::optional<std::string> nameOf(const std::optional<ProcessAccounting>& process) {
    return process.transform([](const auto& known) {
        return std::string(untilZeroByte({known.shortName.data(), known.shortName.size()}));
    });
}

TEST(LiveProcesses, FollowsAChildFromBirthToGrave) {
    LinuxProcessTable table;
    WaitingChild child;
    const auto identifier = child.identifier();
    ASSERT_GT(identifier, 0);
    EXPECT_TRUE(std::ranges::binary_search(listing(table), identifier));
    const auto own = table.accounting(::getpid());
    const auto alive = table.accounting(identifier);
    ASSERT_TRUE(own && alive);
    EXPECT_EQ(alive->parentProcessIdentifier, ::getpid());
    EXPECT_EQ(alive->realUserIdentifier, ::geteuid());
    EXPECT_EQ(nameOf(alive), nameOf(own));
    EXPECT_EQ(table.executablePath(identifier), std::filesystem::canonical("/proc/self/exe"));
    EXPECT_GE(alive->startSeconds, own->startSeconds);
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    EXPECT_LE(std::chrono::seconds(alive->startSeconds), now + std::chrono::seconds(1));
    EXPECT_GE(std::chrono::seconds(alive->startSeconds), now - std::chrono::minutes(10));

    child.die();
    const auto zombie = table.accounting(identifier);
    ASSERT_TRUE(zombie);
    EXPECT_GE(zombie->totalUserTime, alive->totalUserTime);
    EXPECT_EQ(nameOf(zombie), nameOf(own));

    child.reap();
    EXPECT_FALSE(table.accounting(identifier));
    EXPECT_FALSE(std::ranges::binary_search(listing(table), identifier));
}

} // namespace
} // namespace cindertop::linux_platform
