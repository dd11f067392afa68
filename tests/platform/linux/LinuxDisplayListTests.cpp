#include "FixtureMachine.h"
#include "PrivateBus.h"
#include "ScriptedService.h"
#include "TemporaryTree.h"
#include "platform/linux/LidSwitch.h"
#include "platform/linux/LinuxDisplayList.h"

#include <gtest/gtest.h>

#include <chrono>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace cindertop::linux_platform {
namespace {

using namespace std::chrono_literals;

const BusPropertyName lidClosed{.service = "org.freedesktop.login1",
                                .path = "/org/freedesktop/login1",
                                .interface = "org.freedesktop.login1.Manager",
                                .member = "LidClosed"};

TEST(Connector, IsToldByItsName) {
    struct Case {
        std::string_view name;
        std::optional<ConnectorKind> kind;
    };

    for (const auto& [name, kind] : std::to_array<Case>({
             {"card0-eDP-1", ConnectorKind::laptopPanel},
             {"card1-LVDS-1", ConnectorKind::laptopPanel},
             {"card12-DSI-2", ConnectorKind::panel},
             {"card1-HDMI-A-1", ConnectorKind::external},
             {"card0-Virtual-1", ConnectorKind::external},
             {"card1-DP-1-2", ConnectorKind::external}, // behind a hub
             {"card1-Writeback-1", ConnectorKind::writeback},
             {"card0-Unknown-1", ConnectorKind::unknown},
             {"card0", std::nullopt},
             {"card0-", std::nullopt},
             {"card0-eDP", std::nullopt},
             {"card0--1", std::nullopt},
             {"card-eDP-1", std::nullopt},
             {"renderD128", std::nullopt},
             {"version", std::nullopt},
             {"", std::nullopt},
         })) {
        EXPECT_EQ(parseConnectorName(name), kind) << name;
    }
}

TEST(LidState, IsOpenClosedOrUnknown) {
    EXPECT_EQ(parseLidState("state:      open\n"), false);
    EXPECT_EQ(parseLidState("state:      closed\n"), true);
    for (const auto* const text : {"", "state:", "state:      unsupported\n", "open\n", "type: open\n"}) {
        EXPECT_EQ(parseLidState(text), std::nullopt) << text;
    }
}

struct Displays {
    std::int32_t status;
    std::uint32_t count;
    std::uint32_t builtIn;
    std::uint32_t external;

    bool operator==(const Displays&) const = default;
};

/// As the provider asks: the count, then as many identifiers.
Displays ask(const LinuxDisplayList& list) {
    const auto counted = list.countActiveDisplays();
    const auto listed = list.activeDisplays(counted.count);
    EXPECT_EQ(listed.count, counted.count);
    std::uint32_t builtIn = 0;
    std::uint32_t external = 0;
    for (const auto identifier : listed.identifiers) {
        EXPECT_NE(identifier, 0U);
        const auto place = list.placeOf(identifier);
        builtIn += place == DisplayPlace::builtIn ? 1U : 0U;
        external += place == DisplayPlace::external ? 1U : 0U;
    }
    return {.status = counted.status, .count = counted.count, .builtIn = builtIn, .external = external};
}

class DisplaysOfAMachine : public testing::Test {
protected:
    void connect(const std::string& connector, std::string_view status, std::string_view enabled,
                 std::string_view power) const {
        const auto folder = "sys/class/drm/" + connector;
        machine.attribute(folder + "/status", status)
            .attribute(folder + "/enabled", enabled)
            .attribute(folder + "/dpms", power);
    }

    TemporaryTree machine;
    std::chrono::nanoseconds now{};
    PrivateBus daemon;
    SystemBus bus{[this] { return now; }, daemon.address()};
    LidSwitch lid{bus, machine.roots()};
    LinuxDisplayList list{lid, machine.roots()};
};

TEST_F(DisplaysOfAMachine, AreTheLitOnes) {
    EXPECT_NE(ask(list).status, 0) << "no graphics at all";
    EXPECT_FALSE(list.status().isAvailable);

    machine.write("sys/class/drm/version", "drm 1.1.0 20060810\n");
    EXPECT_EQ(ask(list), (Displays{0, 0, 0, 0}));
    EXPECT_EQ(list.status().reason, "no graphics connectors");

    for (const auto& [name, expected] : {
             std::pair{"thinkpad", Displays{0, 1, 1, 0}},
             std::pair{"amd-laptop",
                       Displays{0, 1, 0, 1}}, // shut, an external display, a writeback connector
             std::pair{"apple-silicon", Displays{0, 1, 1, 0}},
             std::pair{"broken", Displays{1, 0, 0, 0}}, // an enabled panel without the rest
         }) {
        LidSwitch lid(bus, fixtureMachine(name));
        const LinuxDisplayList list(lid, fixtureMachine(name));
        EXPECT_EQ(ask(list), expected) << name;
        EXPECT_EQ(list.status().isAvailable, expected.status == 0) << name;
    }
}

TEST_F(DisplaysOfAMachine, GoDarkOneByOne) {
    connect("card0-eDP-1", "connected", "enabled", "On");
    connect("card0-DP-1", "connected", "enabled", "On");
    EXPECT_EQ(ask(list), (Displays{0, 2, 1, 1}));
    connect("card0-DP-1", "connected", "enabled", "Off");
    EXPECT_EQ(ask(list), (Displays{0, 1, 1, 0}));
    connect("card0-DP-1", "connected", "disabled", "On");
    EXPECT_EQ(ask(list), (Displays{0, 1, 1, 0}));
    connect("card0-DP-1", "disconnected", "enabled", "On");
    EXPECT_EQ(ask(list), (Displays{0, 1, 1, 0}));
    machine.remove("sys/class/drm/card0-DP-1/dpms").remove("sys/class/drm/card0-DP-1/enabled");
    EXPECT_EQ(ask(list), (Displays{0, 1, 1, 0})) << "no question to a disconnected one";
}

TEST_F(DisplaysOfAMachine, AreUnknownWhileOneDoesNotAnswer) {
    for (const auto* const attribute : {"status", "enabled", "dpms"}) {
        connect("card0-eDP-1", "connected", "enabled", "On");
        connect("card0-DP-1", "connected", "enabled", "On");
        machine.remove(std::string("sys/class/drm/card0-DP-1/") + attribute);
        EXPECT_EQ(ask(list), (Displays{1, 0, 0, 0})) << attribute;
        EXPECT_EQ(list.status().reason, "card0-DP-1 does not tell its state");
    }
    machine.remove("sys/class/drm/card0-DP-1").link("sys/class/drm/card0-DP-1", "gone");
    EXPECT_EQ(ask(list), (Displays{0, 1, 1, 0})) << "unplugged since the listing";
}

TEST_F(DisplaysOfAMachine, StayAsCountedUntilTheNextCount) {
    connect("card0-eDP-1", "connected", "enabled", "On");
    connect("card0-DP-1", "connected", "enabled", "On");
    EXPECT_EQ(list.countActiveDisplays().count, 2U);
    const auto before = list.activeDisplays(2).identifiers;
    machine.remove("sys/class/drm");
    EXPECT_EQ(list.activeDisplays(2).identifiers, before);
    const auto withoutRoom = list.activeDisplays(1);
    EXPECT_EQ(withoutRoom.count, 1U);
    EXPECT_EQ(withoutRoom.identifiers.size(), 1U);
    const auto withTooMuch = list.activeDisplays(3);
    EXPECT_EQ(withTooMuch.count, 2U);
    EXPECT_EQ(withTooMuch.identifiers.back(), 0U);
    EXPECT_NE(list.countActiveDisplays().status, 0);
}

TEST_F(DisplaysOfAMachine, WithoutAPlaceAreNeitherBuiltInNorExternal) {
    connect("card0-Unknown-1", "connected", "enabled", "On");
    EXPECT_EQ(ask(list), (Displays{0, 1, 0, 0}));
    EXPECT_FALSE(list.canFold());
    connect("card1-DP-1", "connected", "enabled", "On");
    EXPECT_EQ(ask(list), (Displays{0, 2, 0, 1}));
    EXPECT_EQ(list.placeOf(4711), DisplayPlace::external) << "none of the list";
}

TEST_F(DisplaysOfAMachine, FoldOverAPanelUnderALid) {
    struct Case {
        std::vector<std::string> connectors;
        std::map<std::string, std::string> facts;
        bool canFold;
    };

    const std::string acpiLid = "proc/acpi/button/lid/LID0/state";
    const std::string switches = "sys/class/input/input3/capabilities/sw";
    const std::string chassis = "sys/class/dmi/id/chassis_type";
    const std::string shape = "proc/device-tree/chassis-type";
    for (const auto& [connectors, facts, canFold] : std::vector<Case>{
             {{"HDMI-A-1"}, {}, false},
             {{"HDMI-A-1", "Virtual-1", "Writeback-1"}, {{chassis, "9"}}, false},
             {{"DP-1", "Unknown-1"}, {{acpiLid, "state: open"}}, false}, // boards list lids that they lack
             {{"eDP-1"}, {{acpiLid, "state: open"}, {chassis, "3"}}, true},
             {{"LVDS-1"}, {{switches, "1"}, {chassis, "3"}}, true},
             {{"DSI-1"}, {{switches, "40001"}}, true},
             {{"DSI-1"}, {{switches, "1 0"}}, false},                 // another switch, in a higher word
             {{"eDP-1"}, {{switches, "20"}, {chassis, "13"}}, false}, // all in one
             {{"eDP-1"}, {{chassis, "30"}}, false},                   // a tablet
             {{"eDP-1"}, {{chassis, "10"}}, true},
             {{"DSI-1"}, {{chassis, "31"}}, true},
             {{"eDP-1"}, {{chassis, "2"}, {shape, "tablet"}}, false},
             {{"DSI-1"}, {{shape, std::string("laptop\0", 7)}}, true},
             {{"eDP-1"}, {}, true}, // nobody says what it is
             {{"LVDS-1"}, {{chassis, "1"}}, true},
             {{"DSI-1"}, {}, false}, // a board with a touch screen
         }) {
        const TemporaryTree tree;
        for (const auto& connector : connectors) {
            tree.attribute("sys/class/drm/card0-" + connector + "/status", "disconnected");
        }
        for (const auto& [file, text] : facts) {
            tree.attribute(file, text);
        }
        LidSwitch lid(bus, tree.roots());
        const LinuxDisplayList list(lid, tree.roots());
        EXPECT_EQ(list.canFold(), canFold)
            << testing::PrintToString(connectors) << testing::PrintToString(facts);
    }
}

TEST_F(DisplaysOfAMachine, FindALidThatIsPluggedInLater) {
    connect("card0-DSI-1", "connected", "enabled", "On");
    EXPECT_FALSE(list.canFold());
    machine.attribute("sys/class/input/input7/capabilities/sw", "1");
    EXPECT_TRUE(list.canFold());
}

TEST_F(DisplaysOfAMachine, FollowALidThatIsNotAnnounced) {
    connect("card0-eDP-1", "connected", "enabled", "On");
    machine.attribute("proc/acpi/button/lid/LID/state", "state:      open");
    daemon.start();
    ScriptedService logind(daemon.address(), lidClosed, true);
    EXPECT_TRUE(logind.until(bus, [&] { return ask(list).count == 0; })) << "logind counts more than ACPI";
    EXPECT_EQ(lid.status(), (SourceStatus{"lid", true, "org.freedesktop.login1"}));

    logind.changeSilently(false);
    now += 2s - 1ns;
    EXPECT_EQ(ask(list).count, 0U);
    now += 1ns;
    EXPECT_TRUE(logind.until(bus, [&] { return ask(list).count == 1; }));
    EXPECT_EQ(logind.questionCount(), 2);

    now += 7s;
    EXPECT_EQ(ask(list).count, 1U);
    EXPECT_NE(lid.status().reason, "org.freedesktop.login1") << "an old answer after a pause";
    EXPECT_TRUE(
        logind.until(bus, [&] { return ask(list), lid.status().reason == "org.freedesktop.login1"; }));
    EXPECT_EQ(logind.questionCount(), 3);

    logind.announce(true);
    EXPECT_TRUE(logind.until(bus, [&] { return ask(list).count == 0; }));
    now += 1h;
    ask(list);
    logind.announce(false);
    EXPECT_TRUE(logind.until(bus, [&] { return ask(list).count == 1; }));
    EXPECT_EQ(logind.questionCount(), 3) << "still asked after it announced a change";
}

} // namespace
} // namespace cindertop::linux_platform
