#include "FixtureMachine.h"
#include "OpenCounter.h"
#include "SteppedClock.h"
#include "TemporaryTree.h"
#include "platform/linux/MachineHeat.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

namespace cindertop::linux_platform {
namespace {

using namespace std::chrono_literals;

struct Sensor {
    int number;
    const char* label;
    const char* input;
    const char* limit = "100000";
};

class MachineHeatTest : public testing::Test {
protected:
    void addProcessor(int number, const std::vector<Sensor>& sensors,
                      std::string_view chip = "coretemp") const {
        const std::filesystem::path folder = "sys/class/hwmon/hwmon" + std::to_string(number);
        tree.attribute(folder / "name", chip);
        for (const auto& [channel, label, input, limit] : sensors) {
            const auto stem = "temp" + std::to_string(channel);
            tree.attribute(folder / (stem + "_label"), label)
                .attribute(folder / (stem + "_input"), input)
                .attribute(folder / (stem + "_crit"), limit);
        }
    }

    HeatReading read() const {
        ThermalZones zones(tree.roots(), clock.clock());
        return MachineHeat(tree.roots(), clock.clock(), zones).read();
    }

    TemporaryTree tree;
    SteppedClock clock;
};

TEST_F(MachineHeatTest, AProcessorKnowsWhereItSlowsItselfDown) {
    struct Case {
        std::vector<Sensor> sensors;
        int state;
    };

    for (const auto& [sensors, state] : std::to_array<Case>({
             {{{1, "Package id 0", "97000"}}, 2},
             {{{1, "Package id 0", "96999"}}, 1},
             {{{1, "Package id 0", "90000"}}, 1},
             {{{1, "Package id 0", "89999"}}, -1}, // a processor that is cool tells nothing of the rest
             {{{1, "Package id 0", "89000"}, {2, "Core 0", "99000"}}, -1}, // the package's sensor decides
             {{{1, "Physical id 0", "89000"}, {2, "Core 0", "99000"}}, -1},
             {{{1, "Package id 0", ""}, {2, "Core 0", "80000"}, {3, "Core 1", "98000"}}, 2},
             {{{1, "Package id 0", "99000", "0"}, {2, "Core 0", "91000"}}, 1},
             {{{2, "Core 0", "92000", "95000"}, {3, "Core 1", "93000", "105000"}}, -1}, // the hottest core
             {{{1, "Package id 0", "48000", "49000"}}, -1}, // no processor's limit
             {{{1, "Package id 0", "50000", "50000"}}, 2},
             {{{1, "Package id 0", "149000", "150000"}}, 2},
             {{{1, "Package id 0", "149000", "150001"}}, -1},
         })) {
        tree.remove("sys/class/hwmon");
        addProcessor(0, sensors);
        const auto reading = read();
        EXPECT_EQ(reading.state, state) << sensors[0].label << " " << sensors[0].input;
        EXPECT_EQ(reading.isProcessorHot, state >= 1) << sensors[0].input;
        EXPECT_FALSE(reading.isAtLimit);
    }
}

TEST_F(MachineHeatTest, TheHotterOfTwoProcessorsAndTheZonesCount) {
    addProcessor(0, {{1, "Package id 0", "60000"}});
    addProcessor(1, {{1, "Package id 1", "99000"}});
    addProcessor(2, {{1, "Tctl", "99000"}}, "k10temp"); // its limit is another thing
    EXPECT_EQ(read().state, 2);
    addProcessor(1, {{1, "Package id 1", "50000"}});
    EXPECT_EQ(read().state, -1);

    const std::filesystem::path zone = "sys/class/thermal/thermal_zone0";
    tree.attribute(zone / "type", "acpitz").attribute(zone / "temp", "97000");
    tree.attribute(zone / "trip_point_0_type", "critical").attribute(zone / "trip_point_0_temp", "99000");
    EXPECT_EQ(read(), (HeatReading{.state = 3, .isAtLimit = true, .isProcessorHot = false}));
}

TEST_F(MachineHeatTest, IsReadOnceInATickAndTellsItsSources) {
    addProcessor(0, {{1, "Package id 0", "60000"}});
    ThermalZones zones(tree.roots(), clock.clock());
    MachineHeat heat(tree.roots(), clock.clock(), zones);
    heat.read();
    const OpenCounter temperature(tree.path() / "sys/class/hwmon/hwmon0/temp1_input");
    clock.advance(1s);
    heat.read();
    heat.read();
    EXPECT_EQ(temperature.take(), 1);
    EXPECT_EQ(heat.status(), (SourceStatus{"thermal zones", true, "none, but the processor's own limit"}));

    const std::filesystem::path zone = "sys/class/thermal/thermal_zone0";
    tree.attribute(zone / "type", "acpitz").attribute(zone / "temp", "50000");
    tree.attribute(zone / "trip_point_0_type", "critical").attribute(zone / "trip_point_0_temp", "99000");
    clock.advance(1s);
    heat.read();
    EXPECT_EQ(heat.status().reason, "1 zone");
}

} // namespace
} // namespace cindertop::linux_platform
