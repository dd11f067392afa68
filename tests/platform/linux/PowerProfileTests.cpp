#include "PrivateBus.h"
#include "ScriptedService.h"
#include "TemporaryTree.h"
#include "platform/linux/PowerProfile.h"

#include <gtest/gtest.h>

#include <chrono>

namespace cindertop::linux_platform {
namespace {

using namespace std::chrono_literals;
using namespace std::string_literals;

const BusPropertyName upower{.service = "org.freedesktop.UPower.PowerProfiles",
                             .path = "/org/freedesktop/UPower/PowerProfiles",
                             .interface = "org.freedesktop.UPower.PowerProfiles",
                             .member = "ActiveProfile"};
const BusPropertyName hadess{.service = "net.hadess.PowerProfiles",
                             .path = "/net/hadess/PowerProfiles",
                             .interface = "net.hadess.PowerProfiles",
                             .member = "ActiveProfile"};
constexpr auto firmware = "sys/firmware/acpi/platform_profile";

class PowerProfileOnABus : public testing::Test {
protected:
    bool reaches(ScriptedService& service, bool isSaving) {
        return service.until(bus, [&] { return profile.isSavingPower() == isSaving; });
    }

    /// Until the reason names the source; the value alone could be another source's.
    bool reachesSource(ScriptedService& service, const std::string& source) {
        return service.until(bus, [&] {
            profile.isSavingPower();
            return profile.status().reason == source;
        });
    }

    PrivateBus daemon;
    TemporaryTree machine;
    std::chrono::nanoseconds now{1h};
    SystemBus bus{[this] { return now; }, daemon.address()};
    PowerProfile profile{bus, machine.roots()};
};

TEST_F(PowerProfileOnABus, WithoutABusTheFirmwareCounts) {
    EXPECT_FALSE(profile.isSavingPower());
    EXPECT_EQ(profile.status(),
              (SourceStatus{"power profile", false, "system bus not reachable; no platform profile"}));
    machine.attribute(firmware, "low-power");
    EXPECT_TRUE(profile.isSavingPower());
    EXPECT_TRUE(profile.status().isAvailable);
    machine.attribute(firmware, "balanced");
    EXPECT_FALSE(profile.isSavingPower());
}

TEST_F(PowerProfileOnABus, TriesAgainAfterHalfAMinuteAndNotBefore) {
    profile.isSavingPower();
    daemon.start();
    now += 30s - 1ns;
    profile.isSavingPower();
    EXPECT_EQ(bus.handle(), nullptr);
    now += 1ns;
    profile.isSavingPower();
    EXPECT_NE(bus.handle(), nullptr);
}

TEST_F(PowerProfileOnABus, FollowsTheServiceThroughItsLife) {
    daemon.start();
    machine.attribute(firmware, "low-power");
    EXPECT_TRUE(profile.isSavingPower()) << "the firmware's, until the service answers";
    {
        ScriptedService service(daemon.address(), upower, "balanced"s);
        EXPECT_TRUE(reaches(service, false));
        service.announce("power-saver"s);
        EXPECT_TRUE(reaches(service, true));
        service.invalidate("performance"s);
        EXPECT_TRUE(reaches(service, false));
        const int questions = service.questionCount();
        service.changeSilently("power-saver"s);
        service.announceMember("PerformanceDegraded");
        service.announce("power-saver"s);
        EXPECT_TRUE(reaches(service, true));
        EXPECT_EQ(service.questionCount(), questions) << "asked although the value was announced";
    }
    machine.attribute(firmware, "balanced");
    ScriptedService witness(
        daemon.address(), {.service = "test.Witness", .path = "/w", .interface = "w.w", .member = "W"}, true);
    EXPECT_TRUE(reaches(witness, false)) << "the dead service's word still counts";
    EXPECT_EQ(profile.status().reason, machine.path() / firmware);

    ScriptedService successor(daemon.address(), upower, "power-saver"s);
    EXPECT_TRUE(reaches(successor, true));
}

TEST_F(PowerProfileOnABus, TheOldNameServesUntilTheNewOneIsThere) {
    daemon.start();
    ScriptedService old(daemon.address(), hadess, "power-saver"s);
    EXPECT_TRUE(reachesSource(old, hadess.service));
    EXPECT_TRUE(profile.isSavingPower());
    ScriptedService current(daemon.address(), upower, "balanced"s);
    EXPECT_TRUE(reachesSource(current, upower.service));
    EXPECT_FALSE(profile.isSavingPower());
}

TEST_F(PowerProfileOnABus, AValueOfAnotherTypeIsNone) {
    daemon.start();
    ScriptedService service(daemon.address(), upower, "power-saver"s);
    EXPECT_TRUE(reaches(service, true));
    service.announce(7);
    EXPECT_TRUE(reaches(service, false));
    EXPECT_EQ(profile.status().reason, "no power profile service answers; no platform profile");
}

TEST_F(PowerProfileOnABus, AsksAServiceAgainThatRefusesOrHangs) {
    daemon.start();
    ScriptedService service(daemon.address(), upower, "power-saver"s);
    const auto asked = [&](int count) {
        return service.until(bus, [&] {
            profile.isSavingPower();
            return service.questionCount() == count;
        });
    };
    service.behave(ScriptedService::Manner::refusing);
    EXPECT_TRUE(asked(1));
    service.behave(ScriptedService::Manner::hanging);
    now += 30s;
    EXPECT_TRUE(asked(2));
    service.behave(ScriptedService::Manner::answering);
    now += 5s;
    EXPECT_FALSE(profile.isSavingPower());
    now += 25s - 1ns;
    profile.isSavingPower();
    EXPECT_EQ(service.questionCount(), 2);
    now += 1ns;
    EXPECT_TRUE(reaches(service, true));
    // What is announced without its value is unknown until the service tells it.
    service.behave(ScriptedService::Manner::hanging);
    service.invalidate("balanced"s);
    EXPECT_TRUE(reaches(service, false));
    EXPECT_EQ(profile.status().reason, "no power profile service answers; no platform profile");
}

TEST_F(PowerProfileOnABus, SurvivesTheDeathOfTheBus) {
    daemon.start();
    {
        ScriptedService service(daemon.address(), upower, "power-saver"s);
        EXPECT_TRUE(reaches(service, true));
        daemon.stop();
        EXPECT_TRUE(service.until(bus, [&] { return bus.handle() == nullptr; }));
        EXPECT_FALSE(profile.isSavingPower());
    }
    daemon.start();
    now += 30s;
    ScriptedService service(daemon.address(), upower, "power-saver"s);
    EXPECT_TRUE(reaches(service, true));
    service.announce("balanced"s);
    EXPECT_TRUE(reaches(service, false));
}

} // namespace
} // namespace cindertop::linux_platform
