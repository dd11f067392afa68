#include "OpenCounter.h"
#include "SteppedClock.h"
#include "TemporaryTree.h"
#include "platform/linux/LinuxThermalPressureNotifications.h"

#include <gtest/gtest.h>

#include <array>

namespace cindertop::linux_platform {
namespace {

using namespace std::chrono_literals;

constexpr std::string_view name = "com.apple.system.thermalpressurelevel";

TEST(ThermalPressure, IsTheHighestRowThatHolds) {
    struct Case {
        double loss;
        HeatReading zones;
        std::uint64_t raw;
    };

    for (const auto& [loss, zones, raw] : std::to_array<Case>({
             {0, {.state = -1}, 0},
             {0, {.state = 0}, 0},
             {0.001, {.state = 0}, 1},
             {0.2499, {.state = -1}, 1},
             {0.25, {.state = -1}, 2},
             {0.5, {.state = 0}, 2},
             {0.501, {.state = 0}, 3},
             {1, {.state = -1}, 3},
             {0, {.state = 1}, 1},
             {0.3, {.state = 1}, 2},
             {0, {.state = 2}, 2},
             {0.1, {.state = 2}, 2},
             {0.6, {.state = 2}, 3},
             {0, {.state = 3}, 3}, // never less than the zones
             {0, {.state = 3, .isAtLimit = true}, 4},
             {1, {.state = 3, .isAtLimit = true}, 4},
         })) {
        EXPECT_EQ(rawThermalPressure(loss, zones), raw) << loss << " " << zones.state;
    }
}

class ThermalPressureTest : public testing::Test {
protected:
    static constexpr auto zone = "sys/class/thermal/thermal_zone0/";
    static constexpr auto cooler = "sys/class/thermal/cooling_device0/";

    void set(std::string_view folder, std::string_view file, std::string_view text) const {
        tree.attribute(std::string(folder) + std::string(file), text);
    }

    void addZone() const {
        set(zone, "type", "acpitz");
        set(zone, "temp", "40000");
        set(zone, "trip_point_0_type", "critical");
        set(zone, "trip_point_0_temp", "110000");
        set(zone, "trip_point_1_type", "passive");
        set(zone, "trip_point_1_temp", "85000");
    }

    void addCooler() const {
        set(cooler, "type", "Processor");
        set(cooler, "cur_state", "0");
        set(cooler, "max_state", "3");
        set(zone, "cdev0_trip_point", "1");
        tree.link("sys/class/thermal/thermal_zone0/cdev0", "../cooling_device0");
    }

    TemporaryTree tree;
    SteppedClock clock;
    ThermalZones zones{tree.roots(), clock.clock()};
    MachineHeat heat{tree.roots(), clock.clock(), zones};
    LinuxThermalPressureNotifications pressure{tree.roots(), clock.clock(), heat};
};

TEST(ThermalPressureOfMachines, RegistersWhereSomethingTells) {
    struct Case {
        const char* machine;
        bool isRegistered;
        SourceStatus status;
    };

    const SteppedClock clock;
    for (const auto& [machine, isRegistered, status] : std::to_array<Case>({
             {"thinkpad", true, {"CPU throttling", true, "9 CPU cooling devices and 8 throttle counters"}},
             {"amd-laptop", true, {"CPU throttling", true, "8 CPU cooling devices"}},
             {"apple-silicon",
              false,
              {"CPU throttling", false, "no CPU cooling device and no throttle counter"}},
             {"bare-vm", false, {"CPU throttling", false, "no CPU cooling device and no throttle counter"}},
             {"broken", false, {"CPU throttling", false, "no CPU cooling device and no throttle counter"}},
         })) {
        const auto folder = std::filesystem::path(CINDERTOP_FIXTURES) / machine;
        const Roots roots{.proc = folder / "proc", .sys = folder / "sys"};
        ThermalZones zones(roots, clock.clock());
        MachineHeat heat(roots, clock.clock(), zones);
        LinuxThermalPressureNotifications pressure(roots, clock.clock(), heat);
        EXPECT_FALSE(pressure.status().isAvailable);
        const auto registration = pressure.registerCheck(name);
        EXPECT_EQ(registration.status == 0, isRegistered) << machine;
        EXPECT_EQ(pressure.status(), status) << machine;
        if (isRegistered) {
            const auto state = pressure.state(registration.token);
            EXPECT_EQ(state.status, 0U);
            EXPECT_EQ(state.raw, 0U) << machine;
        }
    }
}

TEST_F(ThermalPressureTest, RisesAndFallsWithTheHeat) {
    addZone();
    addCooler();
    const auto token = pressure.registerCheck(name).token;

    struct Step {
        const char* temperature;
        const char* coolerState;
        std::uint64_t raw;
    };

    for (const auto& [temperature, coolerState, raw] : std::to_array<Step>({
             {"60000", "0", 0},
             {"80000", "0", 1},
             {"96000", "0", 2},
             {"96000", "1", 2},
             {"98000", "3", 3},
             {"107000", "3", 4},
             {"", "3", 3},
             {"70000", "2", 2},
             {"50000", "1", 2},
             {"50000", "0", 0},
         })) {
        clock.advance(1s);
        set(zone, "temp", temperature);
        set(cooler, "cur_state", coolerState);
        const auto state = pressure.state(token);
        EXPECT_EQ(state.status, 0U);
        EXPECT_EQ(state.raw, raw) << temperature << " " << coolerState;
    }
}

TEST_F(ThermalPressureTest, AFrequencyCapCountsWhileACoolerIsActive) {
    addCooler();
    set(cooler, "max_state", "99");
    set("sys/devices/system/cpu/cpufreq/policy0/", "scaling_max_freq", "800000");
    set("sys/devices/system/cpu/cpufreq/policy0/", "cpuinfo_max_freq", "4000000");
    const auto token = pressure.registerCheck(name).token;
    EXPECT_EQ(pressure.state(token).raw, 0U);
    set(cooler, "cur_state", "1");
    EXPECT_EQ(pressure.state(token).raw, 3U);
}

TEST_F(ThermalPressureTest, CountersAloneAreEnough) {
    constexpr auto counter = "sys/devices/system/cpu/cpu0/thermal_throttle/";
    set(counter, "package_throttle_total_time_ms", "1000");
    const auto registration = pressure.registerCheck(name);
    ASSERT_EQ(registration.status, 0U);
    EXPECT_EQ(pressure.state(registration.token).raw, 0U);
    clock.advance(1s);
    set(counter, "package_throttle_total_time_ms", "1600");
    EXPECT_EQ(pressure.state(registration.token).raw, 2U); // half at most
    EXPECT_EQ(pressure.status().reason, "1 throttle counter");
}

TEST_F(ThermalPressureTest, AProcessorNearItsLimitThrottlesWhileTheCounterSaysSo) {
    constexpr auto counter = "sys/devices/system/cpu/cpu0/thermal_throttle/";
    constexpr auto chip = "sys/class/hwmon/hwmon0/";
    set(chip, "name", "coretemp");
    set(chip, "temp1_crit", "100000");
    set(chip, "temp1_input", "91000");
    set(counter, "package_throttle_count", "1");
    set(counter, "package_throttle_total_time_ms", "0");
    const auto token = pressure.registerCheck(name).token;

    struct Step {
        const char* temperature;
        const char* count;
        const char* time;
        std::uint64_t raw;
    };

    for (const auto& [temperature, count, time, raw] : std::to_array<Step>({
             {"91000", "1", "0", 1},
             {"91000", "2", "0", 2},
             {"90000", "2", "0", 2},
             {"90000", "2", "9000", 1},
             {"89999", "3", "9000", 0},
         })) {
        clock.advance(1s);
        set(chip, "temp1_input", temperature);
        set(counter, "package_throttle_count", count);
        set(counter, "package_throttle_total_time_ms", time);
        EXPECT_EQ(pressure.state(token).raw, raw) << temperature << " " << count << " " << time;
    }
}

TEST_F(ThermalPressureTest, FailsWithoutASourceAndWhenItGoesAway) {
    addZone(); // zones alone are no pressure
    EXPECT_NE(pressure.registerCheck(name).status, 0U);
    addCooler();
    EXPECT_NE(pressure.registerCheck("com.example.other").status, 0U);

    const auto registration = pressure.registerCheck(name);
    ASSERT_EQ(registration.status, 0U);
    EXPECT_EQ(pressure.state(registration.token).status, 0U);
    EXPECT_NE(pressure.state(registration.token + 1).status, 0U);
    set(cooler, "cur_state", "");
    EXPECT_NE(pressure.state(registration.token).status, 0U);
    EXPECT_FALSE(pressure.status().isAvailable);
    set(cooler, "cur_state", "3");
    EXPECT_EQ(pressure.state(registration.token).raw, 3U);

    const auto other = pressure.registerCheck(name);
    pressure.cancel(registration.token);
    EXPECT_NE(pressure.state(registration.token).status, 0U);
    EXPECT_EQ(pressure.state(other.token).status, 0U);
}

TEST_F(ThermalPressureTest, SharesTheZonesReadingOfTheTick) {
    addZone();
    addCooler();
    const auto token = pressure.registerCheck(name).token;
    const OpenCounter temperature(tree.path() / zone / "temp");
    clock.advance(1s);
    EXPECT_EQ(heat.read().state, 0);
    EXPECT_EQ(pressure.state(token).raw, 0U);
    EXPECT_EQ(temperature.take(), 1);
}

} // namespace
} // namespace cindertop::linux_platform
