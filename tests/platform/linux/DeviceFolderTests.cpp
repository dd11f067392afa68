#include "SteppedClock.h"
#include "TemporaryTree.h"
#include "platform/linux/DeviceFolder.h"

#include <gtest/gtest.h>

namespace cindertop::linux_platform {
namespace {

using namespace std::chrono_literals;

class DeviceFolderTest : public testing::Test {
protected:
    TemporaryTree tree;
    SteppedClock clock;
};

TEST_F(DeviceFolderTest, IsOutdatedWhenADeviceComesGoesOrIsReplaced) {
    tree.folder("sys/class/thermal/thermal_zone0");
    DeviceFolder folder(tree.roots(), "class/thermal", clock.clock());
    EXPECT_TRUE(folder.isOutdated());
    EXPECT_FALSE(folder.isOutdated());

    tree.folder("sys/class/thermal/cooling_device0");
    EXPECT_TRUE(folder.isOutdated());
    EXPECT_FALSE(folder.isOutdated());

    tree.folder("sys/class/thermal/new").remove("sys/class/thermal/thermal_zone0");
    std::filesystem::rename(folder.path() / "new", folder.path() / "thermal_zone0");
    EXPECT_TRUE(folder.isOutdated());

    tree.remove("sys/class");
    EXPECT_TRUE(folder.isOutdated());
    EXPECT_FALSE(folder.isOutdated());
}

TEST_F(DeviceFolderTest, GrowsOldByItself) {
    DeviceFolder folder(tree.roots(), "class/thermal", clock.clock());
    EXPECT_TRUE(folder.isOutdated()); // also without a folder: what was learnt is that there is nothing
    clock.advance(29s);
    EXPECT_FALSE(folder.isOutdated());
    clock.advance(1s);
    EXPECT_TRUE(folder.isOutdated());
}

TEST_F(DeviceFolderTest, IsNotListedWhileTheKernelReportsNoEvent) {
    tree.folder("sys/class/thermal").attribute("sys/kernel/uevent_seqnum", "7");
    DeviceFolder folder(tree.roots(), "class/thermal", clock.clock());
    EXPECT_TRUE(folder.isOutdated());
    tree.folder("sys/class/thermal/thermal_zone0"); // cannot be on a real machine without an event
    EXPECT_FALSE(folder.isOutdated());
    tree.attribute("sys/kernel/uevent_seqnum", "9");
    EXPECT_TRUE(folder.isOutdated());
    tree.attribute("sys/kernel/uevent_seqnum", "10"); // of another class
    EXPECT_FALSE(folder.isOutdated());
}

} // namespace
} // namespace cindertop::linux_platform
