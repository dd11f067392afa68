#include "OpenCounter.h"
#include "SteppedClock.h"
#include "TemporaryTree.h"
#include "platform/linux/HwmonSensors.h"
#include "platform/linux/LinuxTemperatureEvents.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <utility>

namespace cindertop::linux_platform {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

constexpr TemperatureEventClient::Matching temperatureSensors{.primaryUsagePage = 65280, .primaryUsage = 5};

using Readings = std::vector<std::pair<std::string, double>>;

/// As the program reads: a client for each read, the event before the name.
Readings readAll(TemperatureEvents& events) {
    const auto client = events.createClient();
    client->setMatching(temperatureSensors);
    const auto services = client->copyServices();
    Readings readings;
    for (const auto& service : services.value()) {
        if (const auto event = service->copyEvent(15)) {
            const auto product = service->copyProperty("Product");
            readings.emplace_back(std::get<std::string>(product.value()), event->floatValue(983040));
        }
    }
    return readings;
}

Roots machine(std::string_view name) {
    const auto folder = std::filesystem::path(CINDERTOP_FIXTURES) / name;
    return {.proc = folder / "proc", .sys = folder / "sys"};
}

/// The sensors of a fixture machine.
struct Machine {
    explicit Machine(std::string_view name)
        : zones(machine(name), clock.clock()), sensors(machine(name), clock.clock(), zones) {
        sensors.setObserved(true);
    }

    Readings read() { return readAll(events); }

    SteppedClock clock;
    ThermalZones zones;
    HwmonSensors sensors;
    LinuxTemperatureEvents events{sensors};
};

class HwmonSensorsTest : public testing::Test {
protected:
    static std::filesystem::path chip(int number) { return "sys/class/hwmon/hwmon" + std::to_string(number); }

    HwmonSensorsTest() { sensors.setObserved(true); }

    /// Index 2, because sensors need not start at 1.
    void addChip(int number, std::string_view name, std::string_view label,
                 std::string_view temperature) const {
        tree.attribute(chip(number) / "name", name).attribute(chip(number) / "temp2_input", temperature);
        if (!label.empty()) {
            tree.attribute(chip(number) / "temp2_label", label);
        }
    }

    Readings readAfter(std::chrono::nanoseconds step) {
        clock.advance(step);
        return readAll(events);
    }

    TemporaryTree tree;
    SteppedClock clock;
    ThermalZones zones{tree.roots(), clock.clock()};
    HwmonSensors sensors{tree.roots(), clock.clock(), zones};
    LinuxTemperatureEvents events{sensors};
};

TEST(SensorsOfMachines, ThinkPad) {
    Machine thinkPad("thinkpad");
    EXPECT_EQ(thinkPad.sensors.status().reason, "not read yet");
    EXPECT_THAT(thinkPad.read(),
                ElementsAre(Pair("SSD Composite (nvme0)", 38.85), Pair("SSD Sensor 1 (nvme0)", 38.85),
                            Pair("SSD Sensor 2 (nvme0)", 43.85), Pair("CPU Package 0", 51),
                            Pair("CPU Core 0", 48), Pair("CPU Core 4", 51), Pair("CPU Core 8", 49),
                            Pair("CPU Core 12", 47)));
    EXPECT_EQ(thinkPad.sensors.status(), (SourceStatus{"temperature sensors", true, "8 sensors"}));
}

TEST(SensorsOfMachines, AmdLaptop) {
    EXPECT_THAT(Machine("amd-laptop").read(),
                ElementsAre(Pair("SSD Composite (nvme0)", 41.85), Pair("SSD Sensor 1 (nvme0)", 41.85),
                            Pair("CPU Control", 58.625), Pair("CPU CCD 1", 55.5), Pair("GPU Edge", 49)));
}

TEST(SensorsOfMachines, AppleSilicon) {
    EXPECT_THAT(Machine("apple-silicon").read(),
                ElementsAre(Pair("NAND Flash", 33.1), Pair("Battery Hotspot", 31.9),
                            Pair("Charger Regulator", 34.5), Pair("Battery", 31.2)));
}

TEST(SensorsOfMachines, NoSensors) {
    for (const auto* const name : {"bare-vm", "none"}) {
        Machine bare(name);
        EXPECT_THAT(bare.read(), IsEmpty());
        EXPECT_EQ(bare.sensors.status(),
                  (SourceStatus{"temperature sensors", false, "no known temperature sensor"}));
    }
}

TEST(SensorsOfMachines, BrokenFilesAreNoReadings) {
    EXPECT_THAT(Machine("broken").read(), ElementsAre(Pair("CPU Core 3", -0.001)));
}

TEST_F(HwmonSensorsTest, OnlyTheMatchingForTemperaturesListsThem) {
    addChip(0, "coretemp", "Core 0", "50000");
    const auto client = events.createClient();
    EXPECT_TRUE(events.isSupported());
    EXPECT_THAT(client->copyServices().value(), IsEmpty());
    client->setMatching({.primaryUsagePage = 65280, .primaryUsage = 6});
    EXPECT_THAT(client->copyServices().value(), IsEmpty());
    client->setMatching(temperatureSensors);
    const auto services = client->copyServices().value();
    ASSERT_EQ(services.size(), 1U);
    EXPECT_EQ(services[0]->copyEvent(14), nullptr);
    EXPECT_EQ(services[0]->copyProperty("LocationID"), std::nullopt);
    EXPECT_EQ(services[0]->copyEvent(15)->floatValue(983041), 0);
}

TEST_F(HwmonSensorsTest, TheStatusCountsWhatAnswers) {
    addChip(0, "coretemp", "Core 0", "50000");
    addChip(1, "amdgpu", "edge", "");
    readAll(events);
    EXPECT_EQ(sensors.status().reason, "1 of 2 sensors");
    addChip(0, "coretemp", "Core 0", "");
    readAfter(30s);
    EXPECT_EQ(sensors.status(), (SourceStatus{"temperature sensors", false, "2 sensors, none answers"}));
}

TEST_F(HwmonSensorsTest, EachThingCountsOnce) {
    const std::filesystem::path zone = "sys/class/thermal/thermal_zone0";
    tree.attribute(zone / "type", "gpu-thermal").attribute(zone / "temp", "61000");
    tree.attribute("sys/class/thermal/thermal_zone1/type", "BAT0");
    tree.attribute("sys/class/thermal/thermal_zone1/temp", "30000");
    addChip(0, "gpu_thermal", "", "61000"); // an older kernel's copy: no device
    addChip(1, "gpu_thermal", "", "61000");
    tree.link(chip(1) / "device", "../../thermal/thermal_zone0");
    tree.attribute("sys/class/power_supply/BAT0/temp", "300");
    addChip(2, "BAT0", "", "30000");
    tree.link(chip(2) / "device", "../../power_supply/BAT0");
    addChip(3, "amdgpu", "edge", "62000"); // not a copy of anything
    EXPECT_THAT(readAll(events), ElementsAre(Pair("GPU Edge", 62), Pair("GPU", 61), Pair("Battery", 30)));
}

TEST_F(HwmonSensorsTest, ABatteryThatOnlyItsCopyKnowsTheHeatOf) {
    tree.attribute("sys/class/power_supply/sbs-12/type", "Battery");
    tree.attribute("sys/class/power_supply/hid-mouse/scope", "Device");
    int number = 0;
    for (const auto* const supply : {"sbs-12", "hid-mouse"}) {
        addChip(number, supply, "temp", "30000");
        tree.link(chip(number++) / "device", std::filesystem::path("../../power_supply") / supply);
    }
    EXPECT_THAT(readAll(events), ElementsAre(Pair("Battery", 30)));
}

TEST_F(HwmonSensorsTest, SuppliesOfMiceAndChargersAreNoBattery) {
    const std::filesystem::path supplies = "sys/class/power_supply";
    tree.attribute(supplies / "hid-mouse/temp", "250").attribute(supplies / "hid-mouse/scope", "Device");
    tree.attribute(supplies / "charger/temp", "600").attribute(supplies / "charger/type", "USB");
    tree.attribute(supplies / "battery/temp", "-12").attribute(supplies / "battery/type", "Battery");
    EXPECT_THAT(readAll(events), ElementsAre(Pair("Battery", -1.2)));
}

TEST_F(HwmonSensorsTest, SleepingDevicesAreLeftAlone) {
    addChip(0, "amdgpu", "edge", "50000");
    const auto status = chip(0) / "device/power/runtime_status";
    const OpenCounter temperature(tree.path() / chip(0) / "temp2_input");
    for (const auto* const text : {"suspended", "suspending", "resuming", "error", ""}) {
        tree.attribute(status, text);
        EXPECT_THAT(readAfter(1s), IsEmpty()) << text;
        EXPECT_EQ(temperature.take(), 0) << text;
    }
    for (const auto* const text : {"active", "unsupported"}) {
        tree.attribute(status, text);
        EXPECT_THAT(readAfter(1s), ElementsAre(Pair("GPU Edge", 50))) << text;
    }

    const auto listed = sensors.list();
    tree.attribute(status, "suspended");
    temperature.take();
    clock.advance(1s); // it fell asleep between the list and the read
    EXPECT_FALSE(sensors.temperature(*listed.at(0)));
    EXPECT_EQ(temperature.take(), 0);
    tree.remove(status);
    EXPECT_THAT(readAfter(1s), ElementsAre(Pair("GPU Edge", 50)));
}

TEST_F(HwmonSensorsTest, AnAwakeGraphicsCardIsLeftTheTimeToFallAsleep) {
    addChip(0, "amdgpu", "edge", "50000");
    tree.attribute(chip(0) / "temp3_input", "55000").attribute(chip(0) / "temp3_label", "mem");
    const auto power = chip(0) / "device/power";
    tree.attribute(power / "runtime_status", "active").attribute(power / "autosuspend_delay_ms", "5000");
    const OpenCounter edge(tree.path() / chip(0) / "temp2_input");
    const OpenCounter memory(tree.path() / chip(0) / "temp3_input");

    struct Case {
        const char* control;
        const char* delay;
        std::chrono::seconds longestRest; ///< no read before this
    };

    for (const auto& [control, delay, rest] : std::to_array<Case>({
             {"auto", "5000", 6s},
             {"auto", "12000", 13s},
             {"on", "5000", 1s},
             {"auto", "-1", 1s},
             {"auto", "0", 1s},
             {"auto", "", 1s}, // it sleeps whenever nobody uses it
         })) {
        tree.attribute(power / "control", control).attribute(power / "autosuspend_delay_ms", delay);
        clock.advance(60s);
        for (std::chrono::seconds passed{0}; passed < rest; passed += 1s) {
            EXPECT_THAT(readAll(events), ElementsAre(Pair("GPU Edge", 50), Pair("GPU Memory", 55)));
            clock.advance(1s);
        }
        EXPECT_EQ(edge.take(), 1) << control << delay;
        EXPECT_EQ(memory.take(), 1) << control << delay;
        addChip(1, "iwlwifi_1", "", "40000"); // learning anew does not forget the read
        readAll(events);
        EXPECT_EQ(edge.take(), 1) << control << delay;
        EXPECT_EQ(memory.take(), 1) << control << delay;
        tree.remove(chip(1));
    }

    tree.attribute(power / "control", "auto").attribute(power / "autosuspend_delay_ms", "3600000");
    EXPECT_THAT(readAfter(59s), ElementsAre(Pair("GPU Edge", 50), Pair("GPU Memory", 55)));
    EXPECT_THAT(readAfter(1s), IsEmpty()); // too long ago to say something about now
}

TEST_F(HwmonSensorsTest, StorageIsReadEveryHalfMinuteWhileSomebodyLooks) {
    addChip(0, "nvme", "Composite", "40000");
    tree.folder("sys/class/nvme/nvme0").link(chip(0) / "device", "../../nvme/nvme0");
    addChip(1, "coretemp", "Core 0", "50000");
    const OpenCounter temperature(tree.path() / chip(0) / "temp2_input");
    const auto both = ElementsAre(Pair("SSD Composite (nvme0)", 40), Pair("CPU Core 0", 50));

    sensors.setObserved(false);
    EXPECT_THAT(readAll(events), ElementsAre(Pair("CPU Core 0", 50)));
    EXPECT_EQ(sensors.status().reason, "1 sensor");
    EXPECT_EQ(temperature.take(), 0);

    sensors.setObserved(true);
    EXPECT_THAT(readAfter(1s), both);
    EXPECT_THAT(readAfter(1s), both);
    EXPECT_EQ(sensors.temperature(*sensors.list().at(0))->age, 1s);
    EXPECT_THAT(readAfter(28s), both);
    addChip(2, "iwlwifi_1", "", "40000"); // learning anew does not forget the last read
    EXPECT_THAT(readAfter(999ms), both);
    EXPECT_EQ(temperature.take(), 1);
    sensors.setObserved(false);
    EXPECT_THAT(readAfter(1s), ElementsAre(Pair("CPU Core 0", 50)));
    EXPECT_EQ(temperature.take(), 0);
    sensors.setObserved(true);
    EXPECT_EQ(sensors.temperature(*sensors.list().at(0))->age, 0s);
    EXPECT_EQ(temperature.take(), 1);
}

TEST_F(HwmonSensorsTest, OnlyDrivesThatDoNotRotateAreAsked) {
    for (const auto* const text : {"1", "0", ""}) {
        tree.remove("sys/class/hwmon");
        addChip(0, "drivetemp", "", "35000");
        tree.link(chip(0) / "device", "../../../devices/ata1");
        tree.attribute("sys/devices/ata1/block/sda/queue/rotational", text);
        const OpenCounter temperature(tree.path() / chip(0) / "temp2_input");
        const bool isAsked = std::string_view(text) == "0";
        EXPECT_EQ(readAfter(30s).size(), isAsked ? 1U : 0U) << text;
        EXPECT_EQ(temperature.take(), isAsked ? 1 : 0) << text;
    }
}

TEST_F(HwmonSensorsTest, DrivesAreNamedAfterTheirBlockDevice) {
    addChip(0, "drivetemp", "", "35000");
    tree.attribute("sys/devices/ata1/0:0:0:0/block/sda/queue/rotational", "0")
        .link(chip(0) / "device", "../../../devices/ata1/0:0:0:0");
    addChip(1, "nvme", "Composite", "41000"); // an older kernel links to the PCI function
    tree.folder("sys/devices/pci/0000:01:00.0/nvme/nvme1");
    tree.link(chip(1) / "device", "../../../devices/pci/0000:01:00.0");
    EXPECT_THAT(readAll(events),
                ElementsAre(Pair("SSD or HDD drive (sda)", 35), Pair("SSD Composite (nvme1)", 41)));
}

TEST_F(HwmonSensorsTest, NamesAreLearntOnceAndAnewWithTheDevices) {
    addChip(0, "coretemp", "Core 0", "50000");
    EXPECT_THAT(readAll(events), ElementsAre(Pair("CPU Core 0", 50)));
    const OpenCounter label(tree.path() / chip(0) / "temp2_label");
    EXPECT_THAT(readAfter(1s), ElementsAre(Pair("CPU Core 0", 50)));
    EXPECT_EQ(label.take(), 0);

    tree.attribute("sys/class/thermal/thermal_zone0/type", "TSKN");
    tree.attribute("sys/class/thermal/thermal_zone0/temp", "33000");
    addChip(1, "nouveau", "", "60000");
    EXPECT_THAT(readAfter(1s), ElementsAre(Pair("CPU Core 0", 50), Pair("GPU", 60), Pair("Skin", 33)));

    const auto listed = sensors.list();
    tree.remove(chip(1));
    EXPECT_EQ(sensors.temperature(*listed.at(1)).has_value(), false);
    EXPECT_THAT(readAfter(1s), ElementsAre(Pair("CPU Core 0", 50), Pair("Skin", 33)));
}

TEST_F(HwmonSensorsTest, ZonesShareTheReadingOfTheTick) {
    const std::filesystem::path zone = "sys/class/thermal/thermal_zone0";
    tree.attribute(zone / "type", "acpitz").attribute(zone / "temp", "48000");
    tree.attribute(zone / "trip_point_0_type", "critical").attribute(zone / "trip_point_0_temp", "100000");
    const OpenCounter temperature(tree.path() / zone / "temp");
    EXPECT_EQ(zones.read().state, 0);
    EXPECT_THAT(readAll(events), ElementsAre(Pair("CPU Zone", 48)));
    EXPECT_EQ(temperature.take(), 1);
}

} // namespace
} // namespace cindertop::linux_platform
