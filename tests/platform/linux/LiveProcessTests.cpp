#include "platform/linux/LinuxProcessTable.h"
#include "support/Text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <vector>

#include <sys/wait.h>
#include <unistd.h>

namespace cindertop::linux_platform {
namespace {

/// A child that lives until the pipe to it is closed.
class WaitingChild {
public:
    WaitingChild() {
        std::array<int, 2> ends{};
        if (::pipe(ends.data()) != 0) {
            return;
        }
        identifier_ = ::fork();
        if (identifier_ == 0) {
            ::close(ends[1]);
            char byte = 0;
            ::_exit(static_cast<int>(::read(ends[0], &byte, 1)));
        }
        ::close(ends[0]);
        release_ = FileDescriptor(ends[1]);
    }

    ~WaitingChild() { reap(); }

    WaitingChild(const WaitingChild&) = delete;
    WaitingChild& operator=(const WaitingChild&) = delete;

    pid_t identifier() const { return identifier_; }

    /// Waits until it is dead, but leaves it as a zombie.
    void die() {
        release_ = {};
        siginfo_t information{};
        ::waitid(P_PID, static_cast<id_t>(identifier_), &information, WEXITED | WNOWAIT);
    }

    void reap() {
        release_ = {};
        if (identifier_ > 0 && !isReaped_) {
            ::waitpid(identifier_, nullptr, 0);
            isReaped_ = true;
        }
    }

private:
    FileDescriptor release_;
    pid_t identifier_ = -1;
    bool isReaped_ = false;
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
    ASSERT_GT(child.identifier(), 0);
    EXPECT_TRUE(std::ranges::binary_search(listing(table), child.identifier()));
    const auto own = table.accounting(::getpid());
    const auto alive = table.accounting(child.identifier());
    ASSERT_TRUE(own && alive);
    EXPECT_EQ(alive->parentProcessIdentifier, ::getpid());
    EXPECT_EQ(alive->realUserIdentifier, ::geteuid());
    EXPECT_EQ(nameOf(alive), nameOf(own));
    EXPECT_EQ(table.executablePath(child.identifier()), std::filesystem::canonical("/proc/self/exe"));
    EXPECT_GE(alive->startSeconds, own->startSeconds);
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    EXPECT_LE(std::chrono::seconds(alive->startSeconds), now + std::chrono::seconds(1));
    EXPECT_GE(std::chrono::seconds(alive->startSeconds), now - std::chrono::minutes(10));

    child.die();
    const auto zombie = table.accounting(child.identifier());
    ASSERT_TRUE(zombie);
    EXPECT_GE(zombie->totalUserTime, alive->totalUserTime);
    EXPECT_EQ(nameOf(zombie), nameOf(own));

    child.reap();
    EXPECT_FALSE(table.accounting(child.identifier()));
    EXPECT_FALSE(std::ranges::binary_search(listing(table), child.identifier()));
}

TEST(LiveProcesses, NoClockAnswersForImpossibleIdentifiers) {
    const auto clocks = kernelClocks();
    for (const auto identifier : {0, -1, 1 << 23, 1 << 29, std::numeric_limits<std::int32_t>::max()}) {
        EXPECT_FALSE(clocks->cpuTime(identifier)) << identifier;
    }
    EXPECT_GT(clocks->cpuTime(::getpid()), std::chrono::nanoseconds::zero());
}

} // namespace
} // namespace cindertop::linux_platform
