#include "PrivateBus.h"
#include "platform/linux/LogindSleep.h"

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include <poll.h>

namespace cindertop::linux_platform {
namespace {

using namespace std::chrono_literals;
using std::chrono::steady_clock;

/// A logind that python-dbusmock plays.
class MockedLogind {
public:
    explicit MockedLogind(std::string bus) : bus_(std::move(bus)) { start(); }

    ~MockedLogind() { stop(); }

    MockedLogind(const MockedLogind&) = delete;
    MockedLogind& operator=(const MockedLogind&) = delete;

    void start() {
        const pid_t parent = ::getpid();
        process_ = ::fork();
        if (process_ == 0) {
            ::prctl(PR_SET_PDEATHSIG, SIGTERM);
            ::setenv("DBUS_SYSTEM_BUS_ADDRESS", bus_.c_str(), 1);
            if (::getppid() == parent) {
                // Debian's own Python has the module.
                ::execl("/usr/bin/python3", "python3", "-m", "dbusmock", "--system", "--template", "logind",
                        "--logfile", "/dev/null", nullptr);
            }
            ::_exit(127);
        }
    }

    void stop() {
        if (process_ > 0) {
            ::kill(process_, SIGTERM);
            ::waitpid(process_, nullptr, 0);
            process_ = -1;
        }
    }

private:
    std::string bus_;
    pid_t process_ = -1;
};

class LogindSleepTest : public testing::Test { // NOLINT(cppcoreguidelines-virtual-class-destructor)
protected:
    LogindSleepTest() {
        system.start();
        sleep.observe({.willSleep =
                           [this](std::function<void()> isReady) {
                               events += holdsLock() ? "sleep " : "sleep without lock ";
                               ready.push_back(std::move(isReady));
                           },
                       .hasWoken = [this] { events += "wake "; }});
    }

    ~LogindSleepTest() override { sd_bus_flush_close_unref(client); }

    /// Within 20 s: the mock takes its time to start.
    bool until(const std::function<bool()>& isReached) {
        for (const auto end = steady_clock::now() + 20s; steady_clock::now() < end;) {
            sleep.update();
            if (isReached()) {
                return true;
            }
            pollfd file{.fd = sleep.descriptor().value_or(-1), .events = POLLIN, .revents = 0};
            ::poll(&file, 1, 50);
        }
        return false;
    }

    bool holdsLock() const { return sleep.holdsLock(); }

    void announce(bool isBefore) {
        if (client == nullptr) {
            ASSERT_GE(sd_bus_new(&client), 0);
            ASSERT_GE(sd_bus_set_address(client, system.address().c_str()), 0);
            ASSERT_GE(sd_bus_set_bus_client(client, 1), 0);
            ASSERT_GE(sd_bus_start(client), 0);
        }
        sd_bus_error error{};
        const int result = sd_bus_call_method(client, "org.freedesktop.login1", "/org/freedesktop/login1",
                                              "org.freedesktop.DBus.Mock", "EmitSignal", &error, nullptr,
                                              "sssav", "org.freedesktop.login1.Manager", "PrepareForSleep",
                                              "b", 1, "b", isBefore ? 1 : 0);
        EXPECT_GE(result, 0) << (error.message != nullptr ? error.message : "");
        sd_bus_error_free(&error);
    }

    PrivateBus system;
    std::chrono::nanoseconds time{};
    LogindSleep sleep{[this] { return time; }, system.address()};
    std::string events;
    std::vector<std::function<void()>> ready;
    sd_bus* client = nullptr;
};

TEST_F(LogindSleepTest, HoldsSleepUpUntilTheObserverIsReady) {
    const MockedLogind logind(system.address());
    ASSERT_TRUE(until([this] { return holdsLock(); })) << "though logind came after the connection";
    announce(true);
    ASSERT_TRUE(until([this] { return events == "sleep "; }));
    EXPECT_TRUE(holdsLock());
    ready.at(0)();
    EXPECT_FALSE(holdsLock());

    announce(false);
    ASSERT_TRUE(until([this] { return events == "sleep wake "; }));
    ASSERT_TRUE(until([this] { return holdsLock(); })) << "for the next time";
    ready.at(0)();
    EXPECT_TRUE(holdsLock()) << "who is late does not end the next one's";

    announce(true);
    ASSERT_TRUE(until([this] { return ready.size() == 2; }));
    announce(false); // logind did not wait
    ASSERT_TRUE(until([this] { return events == "sleep wake sleep wake " && holdsLock(); }));
}

TEST_F(LogindSleepTest, OutlivesLogindAndTheBus) {
    {
        MockedLogind logind(system.address());
        ASSERT_TRUE(until([this] { return holdsLock(); }));
        logind.stop();
        ASSERT_TRUE(until([this] { return !holdsLock(); }));
        logind.start();
        ASSERT_TRUE(until([this] { return holdsLock(); }));
    }
    system.stop();
    ASSERT_TRUE(until([this] { return !sleep.descriptor(); }));
    EXPECT_FALSE(holdsLock());
    system.start();
    const MockedLogind logind(system.address());
    time += 30s;
    EXPECT_TRUE(until([this] { return holdsLock(); }));
}

TEST_F(LogindSleepTest, SaysNothingWhereThereIsNoLogind) {
    ASSERT_TRUE(until([this] { return sleep.descriptor().has_value(); }));
    sleep.update();
    EXPECT_FALSE(holdsLock());
    EXPECT_EQ(events, "");
}

} // namespace
} // namespace cindertop::linux_platform
