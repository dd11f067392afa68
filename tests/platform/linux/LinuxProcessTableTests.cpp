#include "ScriptedProcesses.h"
#include "platform/linux/LinuxProcessTable.h"
#include "support/Text.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <span>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
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

TEST_F(LinuxProcessTableTest, OneListingServesBothCallsOfACensus) {
    machine.run({.identifier = 4, .name = "a"});
    EXPECT_EQ(table.countProcesses(), 1);
    machine.run({.identifier = 5, .name = "b"});
    std::array<std::int32_t, 8> room{};
    EXPECT_EQ(table.listProcesses(room), 1);
    EXPECT_EQ(table.listProcesses(room), 2); // which no count went before
}

TEST_F(LinuxProcessTableTest, FailsWithoutAProcFolder) {
    LinuxProcessTable none({.proc = "/nonexistent/proc", .sys = {}}, machine.clocks());
    std::array<std::int32_t, 8> room{};
    EXPECT_LT(none.countProcesses(), 1);
    EXPECT_LT(none.listProcesses(room), 1);
    EXPECT_FALSE(none.accounting(1));
    EXPECT_EQ(none.status(), (SourceStatus{"processes", false, "/nonexistent/proc: not there"}));
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

TEST_F(LinuxProcessTableTest, CutsALongNameBetweenCharacters) {
    machine.run({.identifier = 42, .name = "0123456789abcde"});
    machine.file(42, "cmdline", "/bin/0123456789abcdefghijklmnopqrst\xf0\x9f\x94\xa5");
    EXPECT_EQ(textOf(census(42)->longName), "0123456789abcdefghijklmnopqrst");
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

TEST_F(LinuxProcessTableTest, StartTimeStaysWhereItWas) {
    machine.run({.identifier = 42, .name = "busy"});
    const auto before = census(42);
    machine.times().now += seconds(11); // someone set the clock
    machine.run({.identifier = 42, .name = "busy"});
    const auto after = census(42);
    EXPECT_EQ(after->startSeconds, before->startSeconds);
    EXPECT_EQ(after->identityStamp, before->identityStamp);
    EXPECT_GT(after->totalUserTime, before->totalUserTime);
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

TEST_F(LinuxProcessTableTest, SeesAnotherOwner) {
    machine.run({.identifier = 42, .name = "login"});
    const auto before = stamp(42);
    if (::chown((machine.tree().path() / "proc/42").c_str(), 4321, static_cast<gid_t>(-1)) != 0) {
        GTEST_SKIP() << "only root gives folders away";
    }
    machine.run({.identifier = 42, .name = "login"});
    EXPECT_EQ(census(42)->realUserIdentifier, 4321U);
    EXPECT_NE(stamp(42), before);
}

TEST_F(LinuxProcessTableTest, AReusedIdentifierIsANewProcess) {
    machine.run({.identifier = 42, .name = "old"});
    machine.times().cpuTimes[42] = seconds(900);
    const auto before = census(42);
    machine.run({.identifier = 42, .name = "old", .startTicks = 300'000});
    machine.times().cpuTimes[42] = milliseconds(2); // less than before
    const auto after = census(42);
    ASSERT_TRUE(after);
    EXPECT_NE(after->identityStamp, before->identityStamp);
    EXPECT_EQ(after->startSeconds, 1'003'000U);
    EXPECT_EQ(after->totalUserTime, 2'000'000U);
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

TEST_F(LinuxProcessTableTest, AZombieKeepsWhatItWas) {
    machine.run({.identifier = 42, .name = "gnome-terminal-", .startStack = 1000});
    machine.file(42, "cmdline", "/usr/libexec/gnome-terminal-server");
    const auto before = census(42);
    machine.file(42, "cmdline", "");
    machine.run({.identifier = 42, .name = "gnome-terminal-", .state = 'Z'});
    const auto after = census(42);
    EXPECT_EQ(textOf(after->longName), "gnome-terminal-server");
    EXPECT_EQ(after->identityStamp, before->identityStamp);
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

TEST_F(LinuxProcessTableTest, TimesThatFitNowhereAreAbsent) {
    for (const auto ticks :
         {std::numeric_limits<std::uint64_t>::max(), std::uint64_t{922'337'203'685'477'580} / 10}) {
        machine.run({.identifier = 42, .name = "odd", .startTicks = ticks});
        const auto odd = census(42);
        ASSERT_TRUE(odd);
        EXPECT_EQ(odd->startSeconds, 0U);
        EXPECT_EQ(odd->startMicroseconds, 0U);
    }
    machine.times().now = Instant(std::chrono::minutes(30)); // the machine seems to have started before 1970
    machine.run({.identifier = 43, .name = "early"});
    EXPECT_EQ(census(43)->startSeconds, 0U);
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

} // namespace
} // namespace cindertop::linux_platform
