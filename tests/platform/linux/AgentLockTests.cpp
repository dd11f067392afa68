#include "TemporaryTree.h"
#include "platform/linux/AgentLock.h"

#include <gtest/gtest.h>

namespace cindertop::linux_platform {
namespace {

using std::filesystem::perms;

TEST(AgentLock, IsHeldByOneAtATime) {
    const TemporaryTree tree;
    const auto folder = tree.path() / "share/Cindertop";
    {
        EXPECT_EQ(AgentLock::note(folder), "");
        EXPECT_FALSE(AgentLock::isHeld(folder));
        const auto first = AgentLock::tryAcquire(folder, "on display :0");
        EXPECT_TRUE(AgentLock::isHeld(folder));
        ASSERT_TRUE(first);
        EXPECT_EQ(AgentLock::tryAcquire(folder, "me").error(), std::errc::device_or_resource_busy);
        EXPECT_EQ(AgentLock::note(folder), "on display :0");
    }
    EXPECT_TRUE(AgentLock::tryAcquire(folder));
    EXPECT_EQ(AgentLock::note(folder), "");
    EXPECT_EQ(std::filesystem::status(folder).permissions(), perms::owner_all);
    EXPECT_EQ(std::filesystem::status(folder / "agent.lock").permissions(),
              perms::owner_read | perms::owner_write);
}

TEST(AgentLock, SaysWhyItCannotBeHad) {
    const TemporaryTree tree;
    tree.write("file", "").link("linked/agent.lock", "../file");
    EXPECT_EQ(AgentLock::tryAcquire(tree.path() / "file/below").error(), std::errc::not_a_directory);
    EXPECT_EQ(AgentLock::tryAcquire(tree.path() / "linked").error(),
              std::errc::too_many_symbolic_link_levels);
}

} // namespace
} // namespace cindertop::linux_platform
