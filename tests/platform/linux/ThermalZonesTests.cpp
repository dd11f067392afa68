#include "OpenCounter.h"
#include "SteppedClock.h"
#include "TemporaryTree.h"
#include "platform/linux/ThermalZones.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace cindertop::linux_platform {
namespace {

using namespace std::chrono_literals;

constexpr ThermalZoneReading unavailable{.state = -1, .isAtLimit = false};

class ThermalZonesTest : public testing::Test {
protected:
    ThermalZonesTest() {
        addZone(0, "acpitz", "45000");
        tree.attribute(zone(0) / "trip_point_0_type", "critical")
            .attribute(zone(0) / "trip_point_0_temp", "110000");
        tree.attribute(zone(0) / "trip_point_1_type", "passive")
            .attribute(zone(0) / "trip_point_1_temp", "85000");
        bind(0, 0, "Processor", "10", 1);
    }

    static std::filesystem::path zone(int number) {
        return "sys/class/thermal/thermal_zone" + std::to_string(number);
    }

    void addZone(int number, std::string_view type, std::string_view temperature) const {
        tree.attribute(zone(number) / "type", type).attribute(zone(number) / "temp", temperature);
    }

    /// A cooling device of its own, bound to a trip.
    void bind(int number, int cooler, std::string_view type, std::string_view highest, int trip) const {
        const auto device = "cooling_device" + std::to_string(cooler);
        const auto binding = "cdev" + std::to_string(cooler);
        tree.attribute("sys/class/thermal/" + device + "/type", type)
            .attribute("sys/class/thermal/" + device + "/max_state", highest);
        tree.attribute(zone(number) / (binding + "_trip_point"), std::to_string(trip));
        tree.remove(zone(number) / binding).link(zone(number) / binding, "../" + device);
    }

    int stateAfter(std::chrono::nanoseconds step) {
        clock.advance(step);
        return zones.read().state;
    }

    TemporaryTree tree;
    SteppedClock clock;
    ThermalZones zones{tree.roots(), clock.clock()};
};

TEST(ThermalZonesOfMachines, GiveStateAndStatus) {
    struct Case {
        const char* machine;
        ThermalZoneReading reading;
        SourceStatus status;
    };

    const SteppedClock clock;
    for (const auto& [machine, reading, status] : std::to_array<Case>({
             {"thinkpad", {.state = 0}, {"thermal zones", true, "3 zones"}},
             {"amd-laptop", {.state = 0}, {"thermal zones", true, "1 zone"}},
             {"apple-silicon", unavailable, {"thermal zones", false, "no thermal zones"}},
             {"bare-vm", unavailable, {"thermal zones", false, "no thermal zones"}},
             {"broken", unavailable, {"thermal zones", false, "no thermal zone has an answer now"}},
             {"none", unavailable, {"thermal zones", false, "no thermal zones"}},
         })) {
        const auto folder = std::filesystem::path(CINDERTOP_FIXTURES) / machine;
        ThermalZones zones({.proc = folder / "proc", .sys = folder / "sys"}, clock.clock());
        EXPECT_FALSE(zones.status().isAvailable);
        EXPECT_EQ(zones.read(), reading) << machine;
        EXPECT_EQ(zones.status(), status) << machine;
    }
}

TEST_F(ThermalZonesTest, FollowTheHeat) {
    struct Case {
        const char* temperature;
        int state;
    };

    for (const auto& [temperature, state] : std::to_array<Case>({
             {"45000", 0},
             {"76000", 1},
             {"85000", 2},
             {"105000", 3},
             {"", -1}, // the driver has no answer: absent, not cold
             {"-273200", -1},
             {"84000", 1},
             {"50000", 0},
         })) {
        tree.attribute(zone(0) / "temp", temperature);
        EXPECT_EQ(stateAfter(1s), state) << temperature;
    }
}

TEST_F(ThermalZonesTest, TheHottestQualifiedZoneDecides) {
    addZone(1, "cpu-thermal", "96000");
    tree.attribute(zone(1) / "trip_point_7_type", "critical")
        .attribute(zone(1) / "trip_point_7_temp", "99000"); // numbers can have gaps
    EXPECT_EQ(zones.read(), (ThermalZoneReading{.state = 3, .isAtLimit = true}));
    tree.attribute(zone(1) / "mode", "disabled");
    EXPECT_EQ(stateAfter(1s), 0);
    tree.attribute(zone(1) / "mode", "enabled");
    EXPECT_EQ(stateAfter(1s), 3);

    tree.folder("sys/class/power_supply/cpu-thermal"); // a zone that a power supply made of itself
    EXPECT_EQ(stateAfter(30s), 0);
}

TEST_F(ThermalZonesTest, AZoneWithoutUsableTripsSaysNothing) {
    tree.attribute(zone(0) / "trip_point_0_temp", "0").attribute(zone(0) / "trip_point_1_temp", "-274000");
    EXPECT_EQ(zones.read(), unavailable);
    EXPECT_EQ(zones.status().reason, "no thermal zone with a usable trip point");
}

TEST_F(ThermalZonesTest, AnUnreadableTripDoesNotHideTheNext) {
    tree.write(zone(0) / "trip_point_0_type", "").attribute(zone(0) / "temp", "90000");
    EXPECT_EQ(zones.read().state, 2);
}

TEST_F(ThermalZonesTest, APassiveTripActsWhereACoolerOfTheProcessorsIsBound) {
    tree.attribute(zone(0) / "temp", "90000");

    struct Case {
        const char* cooler;
        const char* highest;
        int trip;
        int state;
    };

    for (const auto& [cooler, highest, trip, state] : std::to_array<Case>({
             {"Processor", "10", 1, 2},
             {"cpufreq-cpu0", "5", 1, 2},
             {"thermal-cpufreq-0", "5", 1, 2},
             {"intel_powerclamp", "50", 1, 2},
             {"Processor", "0", 1, 1}, // it cannot be cooled
             {"Processor", "10", 0, 1},
             {"Processor", "10", -1, 1},
             {"Fan", "1", 1, 1},
             {"devfreq-gpu", "4", 1, 1},
         })) {
        bind(0, 0, cooler, highest, trip);
        EXPECT_EQ(stateAfter(30s), state) << cooler << " " << highest << " " << trip;
    }
    bind(0, 12, "cpufreq-cpu4", "5", 1); // one of several is enough
    EXPECT_EQ(stateAfter(30s), 2);
    tree.attribute(zone(0) / "policy", "user_space");
    EXPECT_EQ(stateAfter(30s), 1);
    tree.attribute(zone(0) / "policy", "power_allocator");
    EXPECT_EQ(stateAfter(30s), 2);

    // The read-out of a machine: the link has become a file.
    tree.remove(zone(0) / "cdev12").write(zone(0) / "cdev12", "../cooling_device12");
    EXPECT_EQ(stateAfter(30s), 2);
}

TEST_F(ThermalZonesTest, TheFirmwaresLimitBelongsToTheProcessorsZone) {
    using namespace std::string_literals;
    tree.write("proc/device-tree/compatible", "raspberrypi,5-model-b\0brcm,bcm2712\0"s);
    addZone(1, "cpu-thermal", "81000"); // without any trip
    addZone(2, "rp1-thermal", "99000");
    ThermalZones ofBoard(tree.roots(), clock.clock());
    EXPECT_EQ(ofBoard.read().state, 2);
    EXPECT_EQ(zones.read().state, 0); // of a machine without that device tree
    tree.attribute(zone(1) / "temp", "60000");
    clock.advance(1s);
    EXPECT_EQ(ofBoard.read().state, 0);
}

TEST_F(ThermalZonesTest, SlowDriversAreAskedOnceInATick) {
    addZone(1, "soc-thermal", "50000");
    tree.attribute(zone(1) / "trip_point_0_type", "critical")
        .attribute(zone(1) / "trip_point_0_temp", "100000");
    // Each look at the clock takes 40 ms: so does each read.
    auto now = clock.clock()();
    ThermalZones slow(tree.roots(), [&] { return now += 40ms; });
    const OpenCounter first(tree.path() / zone(0) / "temp");
    const OpenCounter second(tree.path() / zone(1) / "temp");
    EXPECT_EQ(slow.read().state, 0);
    EXPECT_EQ(slow.read().state, 0);
    EXPECT_EQ(slow.temperature("thermal_zone0"), 45000);
    EXPECT_EQ(slow.temperature("thermal_zone1"), 50000);
    EXPECT_EQ(first.take(), 1);
    EXPECT_EQ(second.take(), 1);
    now += 1s;
    EXPECT_EQ(slow.read().state, 0);
    EXPECT_EQ(first.take(), 1);
}

TEST_F(ThermalZonesTest, AskTheDriverOnceInATick) {
    zones.read();
    const OpenCounter temperature(tree.path() / zone(0) / "temp");
    const OpenCounter trip(tree.path() / zone(0) / "trip_point_1_temp");

    tree.attribute(zone(0) / "temp", "90000");
    temperature.take();
    EXPECT_EQ(stateAfter(49ms), 0);
    EXPECT_EQ(zones.temperature("thermal_zone0"), 45000);
    EXPECT_EQ(temperature.take(), 0);

    clock.advance(1ms);
    EXPECT_EQ(zones.temperature("thermal_zone0"), 90000);
    EXPECT_EQ(zones.read().state, 2);
    EXPECT_EQ(temperature.take(), 1);
    EXPECT_EQ(trip.take(), 0);
}

TEST_F(ThermalZonesTest, LearnTripsAnewEveryHalfMinuteAndDevicesAtOnce) {
    tree.attribute(zone(0) / "temp", "70000");
    EXPECT_EQ(zones.read().state, 0);
    tree.attribute(zone(0) / "trip_point_1_temp", "70000"); // as a thermal daemon does
    EXPECT_EQ(stateAfter(29s), 0);
    EXPECT_EQ(stateAfter(1s), 2);

    addZone(1, "soc-thermal", "100000");
    tree.attribute(zone(1) / "trip_point_0_type", "critical")
        .attribute(zone(1) / "trip_point_0_temp", "100000");
    EXPECT_EQ(stateAfter(1s), 3);
    EXPECT_THAT(zones.zones(), testing::ElementsAre(ThermalZoneIdentity{"thermal_zone0", "acpitz"},
                                                    ThermalZoneIdentity{"thermal_zone1", "soc-thermal"}));
    tree.remove(zone(1));
    EXPECT_EQ(stateAfter(1s), 2);
    EXPECT_EQ(zones.temperature("thermal_zone1"), std::nullopt);
}

} // namespace
} // namespace cindertop::linux_platform
