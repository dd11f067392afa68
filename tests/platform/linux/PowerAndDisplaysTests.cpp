#include "TemporaryTree.h"
#include "context/DisplayContext.h"
#include "context/PowerContext.h"
#include "platform/linux/LidSwitch.h"
#include "platform/linux/LinuxDisplayList.h"
#include "platform/linux/LinuxPowerSources.h"
#include "platform/linux/LinuxProcessInformation.h"
#include "platform/linux/PowerProfile.h"

#include <gtest/gtest.h>

#include <optional>
#include <regex>
#include <string>
#include <utility>
#include <vector>

namespace cindertop::linux_platform {
namespace {

using Files = std::vector<std::pair<std::string, std::string>>;

/// A machine as its firmware and drivers show it: supplies with what their summaries hold, connectors that
/// are "lit", "dark" (connected, switched off) or "empty", and single files.
struct Tree {
    std::string name;
    Files supplies, connectors, files;
};

struct Answers {
    PowerSourceKind source = PowerSourceKind::unknown;
    std::optional<int> percent;
    std::optional<bool> isCharging, isFull;
    std::optional<bool> isExternal; ///< the battery's "ExternalConnected"
    bool isSavingPower = false;
    DisplayContextSnapshot displays = DisplayContextSnapshot::unavailable();
};

void build(const TemporaryTree& machine, const Tree& tree) {
    static const std::regex name("(^| )([A-Z_]+=)");
    machine.folder("sys/class/power_supply").folder("sys/class/drm");
    for (const auto& [supply, text] : tree.supplies) {
        machine.write("sys/class/power_supply/" + supply + "/uevent",
                      "DEVTYPE=power_supply" + std::regex_replace(text, name, "\nPOWER_SUPPLY_$2") + "\n");
    }
    for (const auto& [connector, state] : tree.connectors) {
        const auto folder = "sys/class/drm/" + connector;
        machine.attribute(folder + "/status", state == "empty" ? "disconnected" : "connected")
            .attribute(folder + "/enabled", state == "empty" ? "disabled" : "enabled")
            .attribute(folder + "/dpms", state == "lit" ? "On" : "Off");
    }
    for (const auto& [file, text] : tree.files) {
        machine.attribute(file, text);
    }
}

void expect(const Tree& tree, const Answers& answers) {
    const TemporaryTree machine;
    build(machine, tree);
    SystemBus bus(steadyClock(), "unix:path=" + (machine.path() / "no-bus").string());
    PowerProfile profile(bus, machine.roots());
    LidSwitch lid(bus, machine.roots());
    const LinuxPowerSources supplies(machine.roots());
    const LinuxProcessInformation process([] { return 0; }, profile, std::nullopt);
    const LinuxDisplayList displays(lid, machine.roots());
    const auto power = SystemPowerContextProvider(supplies, process).readPowerContext();
    EXPECT_EQ(power.source, answers.source) << tree.name;
    EXPECT_EQ(power.batteryLevelPercent, answers.percent) << tree.name;
    EXPECT_EQ(power.isCharging, answers.isCharging) << tree.name;
    EXPECT_EQ(power.isFullyCharged, answers.isFull) << tree.name;
    EXPECT_EQ(power.isLowPowerModeEnabled, answers.isSavingPower) << tree.name;
    const auto battery = supplies.matchingServices("IOPMPowerSource")->next();
    const auto external = battery ? battery->property("ExternalConnected") : std::nullopt;
    EXPECT_EQ(external, answers.isExternal.transform([](bool is) { return PropertyValue(is); })) << tree.name;
    EXPECT_EQ(SystemDisplayContextProvider(displays).readDisplayContext(), answers.displays) << tree.name;
}

const std::string openLid = "state:      open";
const std::string shutLid = "state:      closed";
const std::string lidState = "proc/acpi/button/lid/LID0/state";
const std::string chassis = "sys/class/dmi/id/chassis_type";

TEST(PowerAndDisplays, OfLaptops) {
    using enum PowerSourceKind;
    expect({.name = "docked and shut, a mouse that runs low",
            .supplies = {{"AC", "TYPE=Mains ONLINE=1"},
                         {"BAT0", "TYPE=Battery STATUS=Charging PRESENT=1 CAPACITY=63 ENERGY_NOW=1"},
                         {"hidpp_battery_0", "TYPE=Battery STATUS=Discharging SCOPE=Device CAPACITY=5"}},
            .connectors = {{"card0-eDP-1", "lit"}, {"card0-DP-2", "lit"}, {"card0-HDMI-A-1", "empty"}},
            .files = {{lidState, shutLid}}},
           {acPower, 63, true, false, true, false, {true, 1, 0, 1, true}});
    expect({.name = "fed by USB-C, which no driver lists, and held at a limit",
            .supplies = {{"BAT0", "TYPE=Battery STATUS=Not charging CAPACITY=80"}},
            .connectors = {{"card1-eDP-1", "lit"}, {"card1-Writeback-1", "lit"}},
            .files = {{lidState, openLid}, {"sys/firmware/acpi/platform_profile", "low-power"}}},
           {acPower, 80, false, false, std::nullopt, true, {true, 1, 1, 0, true}});
    expect({.name = "on battery, a USB controller that still says it is on",
            .supplies = {{"ACAD", "TYPE=Mains ONLINE=0"},
                         {"ucsi-source-psy-USBC000:001", "TYPE=USB ONLINE=1 USB_TYPE=C [PD] PD_PPS"},
                         {"BAT1", "TYPE=Battery STATUS=Discharging CHARGE_NOW=1000 CHARGE_FULL=4000"}},
            .connectors = {{"card0-eDP-1", "lit"}},
            .files = {{lidState, openLid}, {"sys/firmware/acpi/platform_profile", "balanced"}}},
           {batteryPower, 25, false, false, true, false, {true, 1, 1, 0, true}});
    expect(
        {.name = "two batteries, the second one in use while the first is full",
         .supplies = {{"AC", "TYPE=Mains ONLINE=0"},
                      {"BAT0", "TYPE=Battery STATUS=Full ENERGY_NOW=20 ENERGY_FULL=20 CAPACITY=100"},
                      {"BAT1", "TYPE=Battery STATUS=Discharging ENERGY_NOW=10 ENERGY_FULL=30 CAPACITY=33"}},
         .connectors = {{"card0-LVDS-1", "dark"}, {"card0-VGA-1", "lit"}, {"card1-DVI-I-1", "lit"}},
         .files = {{chassis, "10"}}},
        {batteryPower, 60, false, false, false, false, {true, 2, 0, 2, true}});
    expect({.name = "an adapter too weak for what the machine takes",
            .supplies = {{"ADP1", "TYPE=Mains ONLINE=1"},
                         {"BAT0", "TYPE=Battery STATUS=Discharging CAPACITY=50"}},
            .connectors = {{"card0-eDP-1", "empty"}},
            .files = {{lidState, openLid}}},
           {acPower, 50, false, false, true});
    expect({.name = "a battery that tells no state, beside a pen tablet's own adapter",
            .supplies = {{"wacom_ac_3", "TYPE=Mains ONLINE=1 SCOPE=Device"},
                         {"AC0", "TYPE=Mains ONLINE=0"},
                         {"BAT0", "TYPE=Battery STATUS=Unknown CAPACITY=40"}},
            .connectors = {},
            .files = {}},
           {batteryPower, 40, std::nullopt, std::nullopt, false});
    expect(
        {.name = "the battery taken out",
         .supplies = {{"AC", "TYPE=Mains ONLINE=0"}, {"BAT0", "TYPE=Battery STATUS=Discharging PRESENT=0"}},
         .connectors = {{"card0-eDP-1", "lit"}, {"card1-DP-1", "lit"}},
         .files = {{chassis, "9"}}},
        {acPower, {}, {}, {}, {}, false, {true, 2, 1, 1, true}});
}

TEST(PowerAndDisplays, OfTabletsAndArmMachines) {
    using enum PowerSourceKind;
    expect({.name = "chromebook on battery, folded over an external display",
            .supplies = {{"mt6370-charger", "TYPE=USB ONLINE=0"},
                         {"sbs-12-000b",
                          "TYPE=Battery STATUS=Discharging CHARGE_NOW=15 CHARGE_FULL=37 CAPACITY=41"}},
            .connectors = {{"card0-DSI-1", "dark"}, {"card0-DP-1", "lit"}},
            .files = {{"sys/class/input/input1/capabilities/sw", "21"}}},
           {batteryPower, 41, false, false, false, false, {true, 1, 0, 1, true}});
    expect({.name = "laptop of three feeds that counts energy only",
            .supplies = {{"qcom-battmgr-ac", "TYPE=Mains ONLINE=1"},
                         {"qcom-battmgr-usb", "TYPE=USB ONLINE=0"},
                         {"qcom-battmgr-wls", "TYPE=Wireless ONLINE=0"},
                         {"qcom-battmgr-bat", "TYPE=Battery STATUS=Charging ENERGY_NOW=35 ENERGY_FULL=70"}},
            .connectors = {{"card0-eDP-1", "lit"}},
            .files = {{"proc/device-tree/chassis-type", "laptop"}}},
           {acPower, 50, true, false, true, false, {true, 1, 1, 0, true}});
    expect({.name = "two chargers, one in use, no charge told",
            .supplies = {{"CROS_USBPD_CHARGER0", "TYPE=USB ONLINE=0 STATUS=Not charging"},
                         {"CROS_USBPD_CHARGER1", "TYPE=USB ONLINE=1 STATUS=Charging"},
                         {"BAT0", "TYPE=Battery STATUS=Full PRESENT=1"}},
            .connectors = {},
            .files = {}},
           {acPower, std::nullopt, false, true, true});
    expect({.name = "handheld in its dock",
            .supplies = {{"ACAD", "TYPE=Mains ONLINE=1"}, {"BAT1", "TYPE=Battery STATUS=Full CAPACITY=100"}},
            .connectors = {{"card0-eDP-1", "dark"}, {"card0-DP-1", "lit"}},
            .files = {{chassis, "11"}}},
           {acPower, 100, false, true, true, false, {true, 1, 0, 1, false}});
    expect({.name = "board with a battery that its USB port charges, and a touch screen",
            .supplies = {{"axp20x-ac", "TYPE=Mains PRESENT=0 ONLINE=0"},
                         {"axp20x-usb", "TYPE=USB PRESENT=1 ONLINE=1"},
                         {"axp20x-battery", "TYPE=Battery PRESENT=1 STATUS=Charging CAPACITY=7"}},
            .connectors = {{"card0-DSI-1", "dark"}, {"card0-HDMI-A-1", "lit"}},
            .files = {}},
           {acPower, 7, true, false, true, false, {true, 1, 0, 1, false}});
}

TEST(PowerAndDisplays, OfDesktops) {
    using enum PowerSourceKind;
    expect({.name = "the USB-C port of a graphics card, a keyboard's battery, a display link",
            .supplies = {{"ucsi-source-psy-0-00081", "TYPE=USB ONLINE=0"},
                         {"hid-keyboard-battery", "TYPE=Battery STATUS=Discharging SCOPE=Device"}},
            .connectors = {{"card0-DP-1", "lit"}, {"card1-DVI-I-1", "lit"}, {"card0-DP-2", "dark"}},
            .files = {{chassis, "3"}}},
           {acPower, {}, {}, {}, {}, false, {true, 2, 0, 2, false}});
    expect({.name = "the frame buffer of the firmware only",
            .supplies = {},
            .connectors = {{"card0-Unknown-1", "lit"}},
            .files = {{chassis, "3"}}},
           {acPower, {}, {}, {}, {}, false, {true, 1, 0, 0, false}});
    expect({.name = "behind a UPS when the lights go out",
            .supplies = {{"ups", "TYPE=UPS STATUS=Discharging CAPACITY=90"}},
            .connectors = {{"card0-HDMI-A-1", "lit"}},
            .files = {{lidState, openLid}}}, // which the board lists, and does not have
           {upsPower, {}, {}, {}, {}, false, {true, 1, 0, 1, false}});
    expect({.name = "all in one, its own panel off",
            .supplies = {},
            .connectors = {{"card0-eDP-1", "dark"}, {"card0-HDMI-A-1", "lit"}},
            .files = {{chassis, "13"}}},
           {acPower, {}, {}, {}, {}, false, {true, 1, 0, 1, false}});
}

} // namespace
} // namespace cindertop::linux_platform
