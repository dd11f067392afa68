#include "SteppedClock.h"
#include "TemporaryTree.h"
#include "platform/linux/LinuxHardwareMeters.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace cindertop::linux_platform {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

class LinuxHardwareMetersTest : public testing::Test {
protected:
    LinuxHardwareMetersTest() { meters.setObserved(true); }

    static std::filesystem::path chip(int number) { return "sys/class/hwmon/hwmon" + std::to_string(number); }

    void addChip(int number, std::string_view name,
                 const std::vector<std::pair<std::string, std::string>>& attributes) const {
        tree.attribute(chip(number) / "name", name);
        for (const auto& [file, text] : attributes) {
            tree.attribute(chip(number) / file, text);
        }
    }

    /// "NAME RPM" of each fan.
    std::vector<std::string> fans() {
        std::vector<std::string> texts;
        const auto readings = meters.read();
        texts.reserve(readings.fans.size());
        for (const auto& fan : readings.fans) {
            texts.push_back(fan.name + ' ' + std::to_string(fan.revolutionsPerMinute));
        }
        return texts;
    }

    TemporaryTree tree;
    SteppedClock clock;
    LinuxHardwareMeters meters{tree.roots(), clock.clock(), std::make_shared<SensorDevices>()};
};

TEST_F(LinuxHardwareMetersTest, ReadsTheFansOfALaptopByTheirLabelsAndNumbersTheOthers) {
    EXPECT_EQ(meters.read(), MeterReadings{});
    addChip(0, "thinkpad", {{"fan1_input", "2450"}, {"fan2_input", "0"}});
    addChip(1, "dell_smm", {{"fan1_input", "3100"}, {"fan1_label", "CPU Fan"}});
    addChip(2, "amdgpu", {{"fan1_input", "900"}});
    addChip(3, "broken", {{"fan1_input", "65535"}, {"fan2_input", "-1"}, {"fan3_input", "x"}});
    clock.advance(31s);
    EXPECT_THAT(fans(), ElementsAre("Fan 1 2450", "Fan 2 0", "CPU Fan 3100", "Graphics Fan 900"));
}

TEST_F(LinuxHardwareMetersTest, LeavesOutTheConnectorsOfABoardUntilTheirFanTurns) {
    addChip(0, "nct6775",
            {{"fan1_input", "0"}, {"fan2_input", "1200"}, {"fan3_input", "0"}, {"fan4_input", "0"}});
    EXPECT_THAT(fans(), ElementsAre("Fan 2 1200"));
    addChip(0, "nct6775", {{"fan2_input", "0"}, {"fan3_input", "500"}});
    EXPECT_THAT(fans(), ElementsAre("Fan 2 0", "Fan 3 500"));
}

TEST_F(LinuxHardwareMetersTest, ReadsThePowerOfGraphicsChipsAndOfTheWholeMachine) {
    addChip(0, "amdgpu",
            {{"power1_average", "8210000"}, {"power1_input", "9000000"}, {"in1_label", "vddnb"}});
    addChip(1, "amdgpu", {{"power1_input", "31000000"}, {"power2_average", "32000000"}});
    addChip(2, "macsmc_hwmon",
            {{"power1_input", "60000000"},
             {"power1_label", "AC Input Power"},
             {"power2_input", "12400000"},
             {"power2_label", "Total System Power"}});
    addChip(3, "BAT0", {{"power1_input", "11000000"}});
    const auto readings = meters.read();
    EXPECT_THAT(readings.chips,
                ElementsAre(ChipPowerReading{.name = "Processor with graphics", .watts = 8.21},
                            ChipPowerReading{.name = "Graphics chip", .watts = 31}));
    EXPECT_EQ(readings.machineWatts, 12.4);
    EXPECT_THAT(readings.fans, IsEmpty());
}

TEST_F(LinuxHardwareMetersTest, WakesNoDeviceAndKeepsNoneAwake) {
    addChip(0, "amdgpu", {{"power1_average", "8000000"}, {"fan1_input", "900"}});
    const auto power = chip(0) / "device/power";
    tree.attribute(power / "runtime_status", "suspended");
    EXPECT_EQ(meters.read(), MeterReadings{});

    tree.attribute(power / "runtime_status", "active").attribute(power / "control", "auto");
    tree.attribute(power / "autosuspend_delay_ms", "5000");
    clock.advance(1s);
    EXPECT_THAT(fans(), ElementsAre("Graphics Fan 900"));
    addChip(0, "amdgpu", {{"fan1_input", "1000"}});
    clock.advance(5s);
    EXPECT_THAT(fans(), ElementsAre("Graphics Fan 900")); // not due: it could not fall asleep
    clock.advance(2s);
    EXPECT_THAT(fans(), ElementsAre("Graphics Fan 1000"));
}

TEST_F(LinuxHardwareMetersTest, ReadsSeldomWhileNobodyLooks) {
    addChip(0, "thinkpad", {{"fan1_input", "2000"}});
    meters.setObserved(false);
    EXPECT_THAT(fans(), ElementsAre("Fan 2000"));
    addChip(0, "thinkpad", {{"fan1_input", "3000"}});
    clock.advance(29s);
    EXPECT_THAT(fans(), ElementsAre("Fan 2000"));
    clock.advance(1s);
    EXPECT_THAT(fans(), ElementsAre("Fan 3000"));
    addChip(0, "thinkpad", {{"fan1_input", "4000"}});
    meters.setObserved(true);
    EXPECT_THAT(fans(), ElementsAre("Fan 4000"));
}

} // namespace
} // namespace cindertop::linux_platform
