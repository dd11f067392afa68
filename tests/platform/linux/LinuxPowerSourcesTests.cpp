#include "FixtureMachine.h"
#include "TemporaryTree.h"
#include "platform/linux/LinuxPowerSources.h"
#include "platform/linux/PowerOverview.h"

#include <gtest/gtest.h>

#include <chrono>
#include <map>
#include <string>
#include <vector>

namespace cindertop::linux_platform {
namespace {

using namespace std::chrono_literals;
using namespace std::string_literals;

/// Supplies as short uevent texts: "TYPE=Mains ONLINE=1".
std::vector<PowerSupply> suppliesFrom(const std::vector<std::string>& texts) {
    std::vector<PowerSupply> supplies;
    for (const auto& text : texts) {
        std::string uevent = "POWER_SUPPLY_";
        for (const char character : text) {
            uevent += character == ' ' ? "\nPOWER_SUPPLY_"s : std::string(1, character);
        }
        supplies.push_back(makePowerSupply(parseSupplyUevent(uevent)));
    }
    return supplies;
}

const std::string fullBattery = "TYPE=Battery STATUS=Full";
const std::string dischargingBattery = "TYPE=Battery STATUS=Discharging";

TEST(PowerOverview, NamesTheProvidingSource) {
    struct Case {
        std::vector<std::string> supplies;
        std::optional<std::string_view> source;
        std::optional<bool> isExternal;
    };

    for (const auto& [supplies, source, isExternal] : std::vector<Case>{
             {{}, "AC Power", false},
             {{"TYPE=Mains ONLINE=1", fullBattery}, "AC Power", true},
             {{"TYPE=Mains ONLINE=0", dischargingBattery}, "Battery Power", false},
             {{"TYPE=Mains ONLINE=0", "TYPE=USB ONLINE=1", dischargingBattery}, "AC Power", true},
             {{"TYPE=USB ONLINE=2", dischargingBattery}, "AC Power", true},
             {{"TYPE=USB_PD ONLINE=1", dischargingBattery}, "AC Power", true},
             {{"TYPE=Wireless ONLINE=1", dischargingBattery}, "AC Power", true},
             {{"TYPE=USB ONLINE=0", "TYPE=USB ONLINE=0", dischargingBattery}, "Battery Power", false},
             {{dischargingBattery}, "Battery Power", false},
             {{"TYPE=Battery STATUS=Charging"}, "AC Power", true}, // nothing else could charge it
             {{"TYPE=Mains ONLINE=0", "TYPE=Battery STATUS=Charging"}, "Battery Power", false},
             {{"TYPE=Mains ONLINE=0"}, "Off Line", false},
             {{"TYPE=Mains ONLINE=0", "TYPE=Battery PRESENT=0"}, "Off Line", false},
             {{"TYPE=Mains ONLINE=0", "TYPE=Battery SCOPE=Device"}, "Off Line", false},
             {{"TYPE=Mains", fullBattery}, std::nullopt, std::nullopt}, // ONLINE could not be read
             {{"TYPE=Mains", dischargingBattery}, "Battery Power", false},
             {{"TYPE=Mains", "TYPE=Battery STATUS=Charging"}, "AC Power", true},
             {{"TYPE=Mains", "TYPE=USB ONLINE=1", dischargingBattery}, "AC Power", true},
             {{"TYPE=Mains ONLINE=-1"}, std::nullopt, std::nullopt},
             {{"TYPE=UPS STATUS=Discharging"}, "UPS Power", false},
             {{"TYPE=Mains ONLINE=1", "TYPE=UPS STATUS=Discharging"}, "UPS Power", true},
             {{"TYPE=UPS STATUS=Full"}, "AC Power", false},
             {{"TYPE=UPS ONLINE=1"}, "AC Power", false},
             {{"TYPE=UPS STATUS=Full", "TYPE=Mains ONLINE=0", dischargingBattery}, "Battery Power", false},
             {{"TYPE=UPS STATUS=Unknown"}, "Off Line", false},
             {{"TYPE=Unknown"}, "Off Line", false}, // neither a battery nor an adapter
             {{"ONLINE=1"}, std::nullopt, false},
         }) {
        const auto read = suppliesFrom(supplies);
        EXPECT_EQ(providingSource(read), source) << testing::PrintToString(supplies);
        EXPECT_EQ(isExternallyPowered(read), isExternal) << testing::PrintToString(supplies);
    }
}

TEST(PowerOverview, TakesAllBatteriesAsOne) {
    struct Case {
        std::vector<std::string> batteries;
        std::optional<std::int64_t> now, full;
    };

    const std::string energies = " ENERGY_NOW=10 ENERGY_FULL=40";
    const std::string charges = " CHARGE_NOW=3 CHARGE_FULL=6";
    for (const auto& [batteries, now, full] : std::vector<Case>{
             {{" CAPACITY=63" + energies}, 63, 100},
             {{charges}, 3, 6},
             {{energies}, 10, 40},
             {{""}, std::nullopt, std::nullopt},
             {{" CHARGE_NOW=3"}, std::nullopt, std::nullopt},
             {{" CHARGE_NOW=3 CHARGE_FULL=0"}, std::nullopt, std::nullopt},
             {{" CAPACITY=90" + energies, " CAPACITY=10" + energies}, 20, 80},
             {{charges, charges}, 6, 12},
             {{charges, energies}, 75, 200},
             {{" CAPACITY=90" + energies, " CAPACITY=10"}, 100, 200},
             {{" CAPACITY=90", " CHARGE_NOW=1 CHARGE_FULL=8"}, 103, 200}, // 12.5 goes up
             {{" CAPACITY=90", ""}, std::nullopt, std::nullopt},
             {{" CAPACITY=90", " CAPACITY=10 PRESENT=0", " CAPACITY=5 SCOPE=Device"}, 90, 100},
         }) {
        auto texts = batteries;
        for (auto& text : texts) {
            text.insert(0, "TYPE=Battery");
        }
        const auto pack = combineBatteries(suppliesFrom(texts));
        ASSERT_TRUE(pack.has_value()) << testing::PrintToString(batteries);
        EXPECT_EQ(pack->currentCapacity, now) << testing::PrintToString(batteries);
        EXPECT_EQ(pack->maxCapacity, full) << testing::PrintToString(batteries);
    }
    EXPECT_FALSE(
        combineBatteries(suppliesFrom({"TYPE=Mains ONLINE=1", "TYPE=Battery PRESENT=0"})).has_value());
}

TEST(PowerOverview, TellsChargingFromHoldingAndFull) {
    struct Case {
        std::vector<std::string> states;
        std::optional<bool> isCharging, isFull;
    };

    for (const auto& [states, isCharging, isFull] : std::vector<Case>{
             {{"Charging"}, true, false},
             {{"Full"}, false, true},
             {{"Not charging"}, false, false},
             {{"Discharging"}, false, false},
             {{"Unknown"}, std::nullopt, std::nullopt},
             {{"Charging", "Full"}, true, false},
             {{"Full", "Full"}, false, true},
             {{"Charging", "Unknown"}, true, false},
             {{"Full", "Unknown"}, std::nullopt, std::nullopt},
             {{"Discharging", "Unknown"}, std::nullopt, false},
         }) {
        std::vector<PowerSupply> batteries;
        batteries.reserve(states.size());
        for (const auto& state : states) {
            batteries.push_back(makePowerSupply({{"type", "Battery"}, {"status", state}}));
        }
        const auto pack = combineBatteries(batteries);
        EXPECT_EQ(pack->isCharging, isCharging) << testing::PrintToString(states);
        EXPECT_EQ(pack->isFullyCharged, isFull) << testing::PrintToString(states);
    }
}

TEST(PowerOverview, TakesTheWarmestTemperature) {
    const auto warmest = [](const std::vector<std::string>& temperatures) {
        std::vector<std::string> texts;
        texts.reserve(temperatures.size());
        for (const auto& temperature : temperatures) {
            texts.push_back("TYPE=Battery" + temperature);
        }
        return combineBatteries(suppliesFrom(texts))->deciKelvin;
    };
    EXPECT_EQ(warmest({" TEMP=312"}), 3044);
    EXPECT_EQ(warmest({" TEMP=-50"}), 2682);
    EXPECT_EQ(warmest({" TEMP=0"}), 2732);
    EXPECT_EQ(warmest({""}), std::nullopt);
    EXPECT_EQ(warmest({" TEMP=-51", "", " TEMP=-50"}), 2682);
    EXPECT_EQ(warmest({" TEMP=99999999999"}), std::nullopt);
}

using Properties = std::map<std::string, PropertyValue>;

Properties propertiesOf(const PowerSourceEntry& entry) {
    Properties properties;
    for (const auto* const key : {"BatteryInstalled", "CurrentCapacity", "MaxCapacity", "IsCharging",
                                  "FullyCharged", "ExternalConnected", "Temperature", "CycleCount"}) {
        if (const auto value = entry.property(key)) {
            properties.emplace(key, *value);
        }
    }
    return properties;
}

Properties batteryOf(const LinuxPowerSources& sources) {
    const auto entries = sources.matchingServices("IOPMPowerSource");
    const auto battery = entries ? entries->next() : nullptr;
    if (!battery) {
        return {};
    }
    EXPECT_EQ(entries->next(), nullptr);
    return propertiesOf(*battery);
}

PropertyValue number(std::int64_t value) {
    return value;
}

TEST(LinuxPowerSources, DescribesWholeMachines) {
    struct Case {
        std::string machine;
        std::optional<std::string> source;
        Properties battery;
        bool isAvailable;
    };

    for (const auto& [machine, source, battery, isAvailable] : std::vector<Case>{
             {"thinkpad",
              "Battery Power",
              {{"BatteryInstalled", true},
               {"CurrentCapacity", number(17056000 + 9081000)},
               {"MaxCapacity", number(21320000 + 20180000)},
               {"IsCharging", false},
               {"FullyCharged", false},
               {"ExternalConnected", false}},
              true},
             {"amd-laptop",
              "AC Power",
              {{"BatteryInstalled", true},
               {"CurrentCapacity", number(63)},
               {"MaxCapacity", number(100)},
               {"IsCharging", true},
               {"FullyCharged", false},
               {"ExternalConnected", true}},
              true},
             {"apple-silicon",
              "AC Power",
              {{"BatteryInstalled", true},
               {"CurrentCapacity", number(71)},
               {"MaxCapacity", number(100)},
               {"IsCharging", true},
               {"FullyCharged", false},
               {"ExternalConnected", true},
               {"Temperature", number(3044)}},
              true},
             {"bare-vm", "AC Power", {}, false},
             {"broken", std::nullopt, {{"BatteryInstalled", true}}, false},
         }) {
        const LinuxPowerSources sources(fixtureMachine(machine));
        EXPECT_EQ(sources.providingPowerSourceType(), source) << machine;
        EXPECT_EQ(batteryOf(sources), battery) << machine;
        EXPECT_EQ(sources.status().isAvailable, isAvailable) << machine;
        EXPECT_EQ(sources.matchingServices("IOService")->next(), nullptr) << machine;
    }
}

TEST(LinuxPowerSources, WithoutTheFolderNothingIsKnown) {
    const TemporaryTree tree;
    const LinuxPowerSources sources(tree.roots());
    EXPECT_EQ(sources.providingPowerSourceType(), std::nullopt);
    EXPECT_EQ(sources.matchingServices("IOPMPowerSource"), nullptr);
    EXPECT_EQ(sources.status().reason, (tree.path() / "sys/class/power_supply").string() + " is not there");
}

TEST(LinuxPowerSources, ReadsSingleAttributesWhereTheSummaryFails) {
    const TemporaryTree tree;
    const auto battery = "sys/class/power_supply/BAT0/"s;
    tree.write(battery + "uevent", "").folder(battery + "temp"); // a folder cannot be read: as a driver's EIO
    tree.attribute(battery + "type", "Battery").attribute(battery + "status", "Full");
    tree.attribute(battery + "capacity", "98").attribute(battery + "present", "1");
    tree.attribute("sys/class/power_supply/AC/type", "Mains");
    tree.attribute("sys/class/power_supply/AC/online", "1"); // no uevent at all
    tree.write("sys/class/power_supply/mouse/uevent", "POWER_SUPPLY_NAME=mouse\nPOWER_SUPPLY_SCOPE=Device\n");
    tree.attribute("sys/class/power_supply/mouse/type", "Battery"); // a summary without the type
    const LinuxPowerSources sources(tree.roots());
    EXPECT_EQ(sources.providingPowerSourceType(), "AC Power");
    EXPECT_EQ(batteryOf(sources), (Properties{{"BatteryInstalled", true},
                                              {"CurrentCapacity", number(98)},
                                              {"MaxCapacity", number(100)},
                                              {"IsCharging", false},
                                              {"FullyCharged", true},
                                              {"ExternalConnected", true}}));
}

TEST(LinuxPowerSources, OneReadServesATick) {
    const TemporaryTree tree;
    tree.attribute("sys/class/power_supply/BAT0/type", "Battery");
    tree.attribute("sys/class/power_supply/BAT0/status", "Charging");
    std::chrono::nanoseconds now{5s};
    const LinuxPowerSources sources(tree.roots(), [&] { return now; });
    EXPECT_EQ(sources.providingPowerSourceType(), "AC Power");
    tree.remove("sys/class/power_supply");
    now += 100ms - 1ns;
    EXPECT_FALSE(batteryOf(sources).empty());
    now += 1ns;
    EXPECT_TRUE(batteryOf(sources).empty());
}

} // namespace
} // namespace cindertop::linux_platform
