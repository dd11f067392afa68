#include "EventLoop.h"
#include "platform/linux/PrivateBus.h"
#include "platform/qt/SessionBus.h"
#include "scenario/machine/VirtualClock.h"

#include <gtest/gtest.h>

namespace cindertop::desktop {
namespace {

using linux_platform::PrivateBus;

class SessionBusTest : public testing::Test {
protected:
    SessionBusTest() { application(); }

    QString address() const { return QString::fromStdString(daemon.address()); }

    void watch(SessionBus& bus) {
        bus.observe([this](const QDBusConnection& now) { told += now.isConnected() ? "there " : "gone "; });
    }

    void passOneRetry() {
        clock.advanceTo(clock.now() + SessionBus::retryInterval);
        while (clock.nextDue() && *clock.nextDue() <= clock.now()) {
            clock.runNextDue();
        }
    }

    /// libdbus notices in the event loop, and the loss is told from a timer.
    void runUntilTold(const std::string& expected) {
        runUntil([&] {
            while (clock.nextDue() && *clock.nextDue() <= clock.now()) {
                clock.runNextDue();
            }
            return told == expected;
        });
    }

    simulated::VirtualClock clock{Instant(std::chrono::hours(1))};
    PrivateBus daemon;
    std::string told;
};

TEST_F(SessionBusTest, FindsABusThatStartsLateAndOneThatComesBack) {
    SessionBus bus(clock, address());
    watch(bus);
    EXPECT_FALSE(bus.connection().isConnected());
    passOneRetry();
    EXPECT_EQ(told, "");

    daemon.start();
    passOneRetry();
    EXPECT_EQ(told, "there ");
    const auto first = bus.connection();
    EXPECT_TRUE(first.isConnected());

    for (const std::string former : {"there ", "there gone there "}) {
        daemon.stop();
        runUntilTold(former + "gone ");
        EXPECT_FALSE(bus.connection().isConnected());
        passOneRetry();
        EXPECT_EQ(told, former + "gone ") << "nothing to connect to";
        daemon.start();
        passOneRetry();
        EXPECT_EQ(told, former + "gone there ");
        EXPECT_TRUE(bus.connection().isConnected());
    }
    EXPECT_NE(bus.connection().name(), first.name());
    EXPECT_FALSE(clock.nextDue()) << "a connected program waits for nothing";
}

TEST_F(SessionBusTest, IsQuietWithoutAnAddress) {
    const SessionBus bus(clock, "");
    EXPECT_FALSE(bus.connection().isConnected());
    EXPECT_FALSE(clock.nextDue());
}

TEST(SessionBusAddress, IsTheOneOfTheEnvironmentAndStartsNoBus) {
    const auto with = [](const QByteArray& address, const QByteArray& folder) {
        qputenv("DBUS_SESSION_BUS_ADDRESS", address);
        qputenv("XDG_RUNTIME_DIR", folder);
        return sessionBusAddress();
    };
    const auto formerAddress = qgetenv("DBUS_SESSION_BUS_ADDRESS");
    const auto formerFolder = qgetenv("XDG_RUNTIME_DIR");
    EXPECT_EQ(with("unix:path=/a;unix:path=/b", "/run/user/1"), "unix:path=/a;unix:path=/b");
    EXPECT_EQ(with("", "/run/user/1"), "unix:path=/run/user/1/bus");
    EXPECT_EQ(with("autolaunch:", "/run/user/1"), "");
    EXPECT_EQ(with("", ""), "");
    with(formerAddress, formerFolder);
}

} // namespace
} // namespace cindertop::desktop
