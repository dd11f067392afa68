#include "FixtureMachine.h"
#include "OpenCounter.h"
#include "TemporaryTree.h"
#include "platform/linux/LinuxHeatSourceSurvey.h"
#include "platform/linux/LinuxMachine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <string_view>

namespace cindertop::linux_platform {
namespace {

using testing::Contains;

TEST(Fans, TellTheirSpeedOrAreNone) {
    struct Case {
        std::string_view file;
        std::string_view text;
        bool isFound;
    };

    for (const auto& [file, text, isFound] : std::to_array<Case>({
             {"fan1_input", "2400\n", true},
             {"fan12_input", "0\n", true}, // one that stands still
             {"fan1_input", "", false},
             {"fan1_input", "none\n", false},
             {"fan_input", "2400\n", false},
             {"fan1_label", "2400\n", false},
             {"fan1_input_x", "2400\n", false},
             {"temp1_input", "2400\n", false},
         })) {
        const TemporaryTree tree;
        EXPECT_FALSE(findFan(tree.roots()));
        tree.attribute("sys/class/hwmon/hwmon0/name", "other");
        tree.write("sys/class/hwmon/hwmon4/" + std::string(file), text);
        EXPECT_EQ(findFan(tree.roots()), isFound) << file << " " << text;
    }
}

TEST(Fans, OfAChipThatRestsAreLeftAsleep) {
    const TemporaryTree tree;
    const std::filesystem::path chip = "sys/class/hwmon/hwmon0";
    tree.attribute(chip / "fan1_input", "0");
    const OpenCounter opens(tree.path() / chip / "fan1_input");
    for (const auto* const status : {"suspended", "suspending", "resuming"}) {
        tree.attribute(chip / "device/power/runtime_status", status);
        EXPECT_FALSE(findFan(tree.roots())) << status;
    }
    EXPECT_EQ(opens.take(), 0);
    for (const auto* const status : {"active", "unsupported"}) {
        tree.attribute(chip / "device/power/runtime_status", status);
        EXPECT_TRUE(findFan(tree.roots())) << status;
    }
}

TEST(HeatSourceSurvey, FindsWhatALaptopTells) {
    LinuxMachine laptop(fixtureMachine("thinkpad"));
    const auto found = laptop.services().heatSourceSurvey->findHeatSources();
    EXPECT_GE(found.thermalState, 0);
    EXPECT_TRUE(found.pressureSource);
    EXPECT_THAT(found.sensors, Contains("CPU Package 0"));

    LinuxMachine machine(fixtureMachine("bare-vm"));
    EXPECT_EQ(machine.services().heatSourceSurvey->findHeatSources(), HeatSources{});
}

TEST(HeatSourceSurvey, LooksForFansOnce) {
    const TemporaryTree tree;
    LinuxMachine machine(tree.roots());
    EXPECT_FALSE(machine.services().heatSourceSurvey->findHeatSources().hasFan);
    tree.attribute("sys/class/hwmon/hwmon0/fan1_input", "2400");
    EXPECT_FALSE(machine.services().heatSourceSurvey->findHeatSources().hasFan);
    EXPECT_TRUE(LinuxMachine(tree.roots()).services().heatSourceSurvey->findHeatSources().hasFan);
}

} // namespace
} // namespace cindertop::linux_platform
