#include "FixtureMachine.h"
#include "OpenCounter.h"
#include "TemporaryTree.h"
#include "platform/linux/LinuxPowerSources.h"
#include "platform/linux/PowerOverview.h"

#include <gtest/gtest.h>

#include <chrono>
#include <map>
#include <regex>
#include <string>
#include <utility>
#include <vector>

namespace cindertop::linux_platform {
namespace {

using namespace std::chrono_literals;
using namespace std::string_literals;

/// "TYPE=Battery STATUS=Not charging" as the lines of a uevent.
std::string ueventFrom(const std::string& text) {
    static const std::regex name("(^| )([A-Z_]+=)");
    return std::regex_replace(text, name, "\nPOWER_SUPPLY_$2") + "\n";
}

/// Supplies as short uevent texts.
std::vector<PowerSupply> suppliesFrom(const std::vector<std::string>& texts) {
    std::vector<PowerSupply> supplies;
    supplies.reserve(texts.size());
    for (const auto& text : texts) {
        supplies.push_back(makePowerSupply(parseSupplyUevent(ueventFrom(text))));
    }
    return supplies;
}

const std::string fullBattery = "TYPE=Battery STATUS=Full";
const std::string dischargingBattery = "TYPE=Battery STATUS=Discharging";

TEST(PowerOverview, AddsUpTheRatesOfAllBatteries) {
    struct Case {
        std::vector<std::string> supplies;
        std::optional<std::int64_t> milliwatts;
    };

    const auto with = [](const std::string& supply, const std::string& rate) { return supply + " " + rate; };
    const std::string charging = "TYPE=Battery STATUS=Charging";
    const std::string resting = "TYPE=Battery STATUS=Not charging";
    for (const auto& [supplies, milliwatts] : std::vector<Case>{
             {{with(dischargingBattery, "POWER_NOW=11340000")}, -11340},
             {{with(dischargingBattery, "POWER_NOW=-11340000")}, -11340},
             {{with(dischargingBattery, "CURRENT_NOW=3020000 VOLTAGE_NOW=7380000")}, -22287},
             {{with(dischargingBattery, "POWER_NOW=9000000 CURRENT_NOW=1 VOLTAGE_NOW=1")}, -9000},
             {{with(charging, "CURRENT_NOW=-2000000 VOLTAGE_NOW=11500000")}, 23000},
             // No rate, none that makes sense, or none at all.
             {{dischargingBattery}, std::nullopt},
             {{with(dischargingBattery, "CURRENT_NOW=3020000")}, std::nullopt},
             {{with(dischargingBattery, "POWER_NOW=600000000")}, std::nullopt},
             {{with(dischargingBattery, "POWER_NOW=0")}, std::nullopt},
             // A battery at rest drifts a little, and beside a weak adapter it is drawn from.
             {{with(fullBattery, "POWER_NOW=300000")}, std::nullopt},
             {{with(fullBattery, "POWER_NOW=-300000")}, std::nullopt},
             {{"TYPE=Mains ONLINE=1", with(resting, "POWER_NOW=-4000000")}, -4000},
             // Without a status the sign or the plug tells, or nothing.
             {{with("TYPE=Battery STATUS=Unknown", "POWER_NOW=-8000000")}, -8000},
             {{"TYPE=Mains ONLINE=0", with("TYPE=Battery", "POWER_NOW=8000000")}, -8000},
             {{"TYPE=Mains ONLINE=1", with("TYPE=Battery", "POWER_NOW=8000000")}, std::nullopt},
             // Several add up, and one of them at rest needs no rate.
             {{with(dischargingBattery, "POWER_NOW=9000000"), resting}, -9000},
             {{with(dischargingBattery, "POWER_NOW=9000000"), with(dischargingBattery, "POWER_NOW=2000000")},
              -11000},
             {{with(dischargingBattery, "POWER_NOW=5000000"), with(charging, "POWER_NOW=8000000")}, 3000},
             {{with(dischargingBattery, "POWER_NOW=9000000"), charging}, std::nullopt},
             {{with("TYPE=Battery SCOPE=Device STATUS=Discharging", "POWER_NOW=1000000"), fullBattery},
              std::nullopt},
         }) {
        EXPECT_EQ(combineBatteries(suppliesFrom(supplies)).value().milliwatts, milliwatts)
            << supplies.front() << " and " << supplies.size() - 1 << " more";
    }
}

TEST(PowerOverview, NamesTheProvidingSource) {
    struct Case {
        std::vector<std::string> supplies;
        std::optional<std::string_view> source;
        std::optional<bool> isExternal;
    };

    for (const auto& [supplies, source, isExternal] : std::vector<Case>{
             // A UPS that discharges comes first: the adapter that it feeds stays on.
             {{"TYPE=UPS STATUS=Discharging"}, "UPS Power", std::nullopt},
             {{"TYPE=Mains ONLINE=1", "TYPE=UPS STATUS=Discharging"}, "UPS Power", true},
             {{"TYPE=UPS STATUS=Discharging", dischargingBattery}, "UPS Power", std::nullopt},
             {{"TYPE=UPS STATUS=Full", "TYPE=Mains ONLINE=0", dischargingBattery}, "Battery Power", false},
             // Without a battery the machine runs on mains, whatever its ports say.
             {{}, "AC Power", std::nullopt},
             {{"TYPE=Mains ONLINE=0"}, "AC Power", false},
             {{"TYPE=USB ONLINE=0", "TYPE=USB"}, "AC Power", std::nullopt},
             {{"TYPE=Mains ONLINE=0", "TYPE=Battery STATUS=Discharging PRESENT=0"}, "AC Power", false},
             {{"TYPE=Battery STATUS=Discharging SCOPE=Device"}, "AC Power", std::nullopt},
             {{"TYPE=UPS STATUS=Unknown"}, "AC Power", std::nullopt},
             {{"TYPE=Unknown"}, "AC Power", std::nullopt},
             {{"ONLINE=1"}, std::nullopt, std::nullopt}, // perhaps a battery
             // Discharging is off the mains, but for adapters that are all on and too weak.
             {{dischargingBattery}, "Battery Power", std::nullopt},
             {{"TYPE=Mains ONLINE=0", dischargingBattery}, "Battery Power", false},
             {{"TYPE=Mains ONLINE=1", dischargingBattery}, "AC Power", true},
             {{"TYPE=Mains ONLINE=1", "TYPE=Mains ONLINE=1", dischargingBattery}, "AC Power", true},
             {{"TYPE=Mains ONLINE=1", "TYPE=Mains ONLINE=0", dischargingBattery}, "Battery Power", true},
             {{"TYPE=Mains ONLINE=1", "TYPE=Mains", dischargingBattery}, "Battery Power", true},
             {{"TYPE=Mains ONLINE=0", "TYPE=USB ONLINE=1", dischargingBattery}, "Battery Power", true},
             {{"TYPE=Mains ONLINE=1", "TYPE=USB ONLINE=0", dischargingBattery}, "AC Power", true},
             {{"TYPE=USB_PD ONLINE=1", dischargingBattery}, "Battery Power", true},
             {{"TYPE=Wireless ONLINE=2", dischargingBattery}, "Battery Power", true},
             {{"TYPE=Mains", dischargingBattery}, "Battery Power", std::nullopt},
             {{"TYPE=USB ONLINE=1", fullBattery, dischargingBattery}, "Battery Power", true},
             {{"TYPE=USB ONLINE=1", "TYPE=Battery STATUS=Charging", dischargingBattery},
              "Battery Power",
              true},
             // Any other word is said on the mains only, also where none is listed.
             {{"TYPE=Battery STATUS=Charging"}, "AC Power", std::nullopt},
             {{fullBattery}, "AC Power", std::nullopt},
             {{"TYPE=Battery STATUS=Not charging"}, "AC Power", std::nullopt},
             {{"TYPE=Mains ONLINE=0", "TYPE=Battery STATUS=Charging"}, "AC Power", false},
             {{"TYPE=USB ONLINE=0", "TYPE=Mains ONLINE=0", fullBattery}, "AC Power", false},
             {{"TYPE=Mains", fullBattery}, "AC Power", std::nullopt},
             {{fullBattery, "TYPE=Battery STATUS=Unknown"}, "AC Power", std::nullopt},
             // A battery that says nothing leaves it to the supplies.
             {{"TYPE=Battery STATUS=Unknown", "TYPE=Mains ONLINE=1"}, "AC Power", true},
             {{"TYPE=Battery", "TYPE=USB ONLINE=1", "TYPE=Mains ONLINE=0"}, "AC Power", true},
             {{"TYPE=Battery", "TYPE=BrickID ONLINE=1"}, "AC Power", true},
             {{"TYPE=Battery STATUS=Unknown", "TYPE=Wireless ONLINE=1"}, "AC Power", true},
             {{"TYPE=Battery STATUS=Unknown", "TYPE=Mains ONLINE=0"}, std::nullopt, false},
             {{"TYPE=Battery", "TYPE=Mains ONLINE=-1"}, std::nullopt, std::nullopt},
             {{"TYPE=Battery", "TYPE=UPS ONLINE=1 STATUS=Full"}, std::nullopt, std::nullopt},
             {{"TYPE=Battery STATUS=Unknown"}, std::nullopt, std::nullopt},
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
    std::chrono::nanoseconds passing{}; // between the next look at the clock and the one behind it
    const LinuxPowerSources sources(tree.roots(),
                                    [&] { return std::exchange(now, now + std::exchange(passing, 0ns)); });
    EXPECT_EQ(sources.providingPowerSourceType(), "AC Power");
    now += 1s;
    passing = 3s;
    EXPECT_EQ(sources.providingPowerSourceType(), "AC Power");
    tree.remove("sys/class/power_supply");
    now += 100ms - 1ns;
    EXPECT_FALSE(batteryOf(sources).empty()) << "asked twice although the first answer took seconds";
    now += 1ns;
    EXPECT_TRUE(batteryOf(sources).empty());
}

TEST(LinuxPowerSources, AsksADeviceOnlyForItsScope) {
    const TemporaryTree tree;
    const auto mouse = "sys/class/power_supply/hid-mouse-battery/"s;
    const auto battery = "sys/class/power_supply/BAT0/"s;
    const auto plugIn = [&] {
        tree.attribute(mouse + "scope", "Device").write(mouse + "uevent", ueventFrom("TYPE=Battery"));
        tree.attribute(mouse + "type", "Battery").attribute(mouse + "status", "Discharging");
    };
    plugIn();
    tree.attribute(battery + "scope", "System")
        .write(battery + "uevent", ueventFrom("TYPE=Battery STATUS=Full"));
    const OpenCounter scope(tree.path() / mouse / "scope");
    const OpenCounter uevent(tree.path() / mouse / "uevent");
    const OpenCounter status(tree.path() / mouse / "status");
    const OpenCounter system(tree.path() / battery / "uevent");
    PowerSupplyFolder folder(tree.path() / "sys/class/power_supply");
    for (const int reads : {1, 2, 3}) {
        ASSERT_TRUE(folder.read());
        EXPECT_EQ(folder.read()->size(), 1U) << reads;
    }
    EXPECT_EQ(scope.take(), 1) << "known, and asked again";
    EXPECT_EQ(uevent.take() + status.take(), 0) << "woken";
    EXPECT_EQ(system.take(), 6);

    // The same name may be another supply: the former one's folder is kept, so that its inode is not free.
    std::filesystem::rename(tree.path() / mouse, tree.path() / "unplugged");
    tree.write(mouse + "uevent", ueventFrom("TYPE=Mains ONLINE=1"));
    EXPECT_EQ(folder.read()->size(), 2U);
    tree.write(mouse + "uevent", ueventFrom("TYPE=Battery SCOPE=Device"));
    EXPECT_EQ(folder.read()->size(), 1U) << "the scope stands in the summary, too";
    const OpenCounter known(tree.path() / mouse / "uevent");
    EXPECT_EQ(folder.read()->size(), 1U);
    EXPECT_EQ(known.take(), 0);
}

} // namespace
} // namespace cindertop::linux_platform
