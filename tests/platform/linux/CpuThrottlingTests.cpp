#include "SteppedClock.h"
#include "TemporaryTree.h"
#include "platform/linux/CpuCoolers.h"
#include "platform/linux/FrequencyCaps.h"
#include "platform/linux/ThrottleCounters.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <limits>

namespace cindertop::linux_platform {
namespace {

using namespace std::chrono_literals;

class CpuThrottlingTest : public testing::Test {
protected:
    static std::filesystem::path cooler(int number) {
        return "sys/class/thermal/cooling_device" + std::to_string(number);
    }

    static std::filesystem::path processor(int number) {
        return "sys/devices/system/cpu/cpu" + std::to_string(number);
    }

    void addCooler(int number, std::string_view type, std::string_view state,
                   std::string_view highest) const {
        tree.attribute(cooler(number) / "type", type).attribute(cooler(number) / "cur_state", state);
        tree.attribute(cooler(number) / "max_state", highest);
    }

    void setCounter(int number, std::string_view name, std::string_view milliseconds) const {
        tree.attribute(processor(number) / "thermal_throttle" / name, milliseconds);
    }

    TemporaryTree tree;
    SteppedClock clock;
};

TEST(CpuCoolers, AreKnownByTheirType) {
    for (const auto* const type :
         {"Processor", "cpufreq-cpu0", "thermal-cpufreq-1", "intel_powerclamp", "idle-cpu3"}) {
        EXPECT_TRUE(isCpuCooler(type)) << type;
    }
    for (const auto* const type :
         {"", "Fan", "LCD", "TCC Offset", "PCIe_Port_Link_Speed_0000:00:1c.0", "iwlwifi_1", "BAT0-charge",
          "charging", "devfreq-gpu", "processor", "mt7921_phy0"}) {
        EXPECT_FALSE(isCpuCooler(type)) << type;
    }
}

TEST(CpuCoolers, LoseTheirShareOfAllSteps) {
    struct Case {
        std::int64_t current;
        std::int64_t highest;
        double loss;
    };

    for (const auto& [current, highest, loss] : std::to_array<Case>({
             {0, 10, 0},
             {-1, 50, 0}, // intel_powerclamp at rest
             {1, 3, 0.25},
             {2, 3, 0.5},
             {3, 3, 0.75},
             {9, 3, 1},
             {3, 0, 0},
             {3, -4, 0},
             {std::numeric_limits<std::int64_t>::max(), std::numeric_limits<std::int64_t>::max(), 1},
         })) {
        EXPECT_EQ(coolerLoss(current, highest), loss) << current << " of " << highest;
    }
}

TEST_F(CpuThrottlingTest, TheStrongestCpuCoolerCounts) {
    addCooler(0, "Processor", "1", "9");
    addCooler(1, "Processor", "", "9");
    addCooler(2, "cpufreq-cpu0", "4", "9");
    addCooler(3, "Fan", "9", "9");
    addCooler(4, "Processor", "1", "0");
    CpuCoolers coolers(tree.roots(), clock.clock());
    auto reading = coolers.read();
    ASSERT_TRUE(reading);
    EXPECT_EQ(reading->answering, 2U);
    EXPECT_EQ(reading->loss, 0.4);

    tree.remove(cooler(2)).attribute(cooler(0) / "cur_state", "-1");
    reading = coolers.read();
    ASSERT_TRUE(reading);
    EXPECT_EQ(reading->loss, 0);
    tree.remove("sys/class/thermal");
    EXPECT_FALSE(coolers.read());
}

TEST_F(CpuThrottlingTest, CapsComeFromPoliciesElseFromProcessors) {
    tree.attribute(processor(0) / "cpufreq/scaling_max_freq", "750000");
    tree.attribute(processor(0) / "cpufreq/cpuinfo_max_freq", "1000000");
    tree.attribute("sys/devices/system/cpu/cpuidle/current_driver", "none");
    FrequencyCaps byProcessor(tree.roots(), clock.clock());
    EXPECT_EQ(byProcessor.largestLoss(), 0.25);

    const std::filesystem::path policies = "sys/devices/system/cpu/cpufreq";
    for (const auto& [policy, allowed] : {std::pair("policy0", "2000000"), std::pair("policy4", "1000000")}) {
        tree.attribute(policies / policy / "scaling_max_freq", allowed);
        tree.attribute(policies / policy / "cpuinfo_max_freq", "2000000");
    }
    tree.attribute(policies / "policy8/scaling_max_freq", "1")
        .attribute(policies / "policy8/cpuinfo_max_freq", "0");
    FrequencyCaps byPolicy(tree.roots(), clock.clock());
    EXPECT_EQ(byPolicy.largestLoss(), 0.5);
    tree.attribute(policies / "policy4/scaling_max_freq", "2500000"); // a boost beyond the nominal top
    EXPECT_EQ(byPolicy.largestLoss(), 0);
}

TEST_F(CpuThrottlingTest, CountersGiveTheirShareOfTheTimeBetweenReads) {
    setCounter(0, "package_throttle_total_time_ms", "5000");
    setCounter(0, "core_throttle_total_time_ms", "90000");
    setCounter(1, "core_throttle_total_time_ms", "100"); // without the package's counter
    setCounter(2, "core_throttle_count", "77");
    ThrottleCounters counters(tree.roots(), clock.clock());

    struct Step {
        const char* package;
        const char* core;
        std::chrono::milliseconds elapsed;
        double share;
    };

    for (const auto& [package, core, elapsed, share] : std::to_array<Step>({
             {"5000", "100", 0ms, 0}, // the first read has nothing to compare with
             {"5250", "100", 1000ms, 0.25},
             {"9000", "100", 49ms, 0.25}, // too soon: the answer stays
             {"5250", "600", 951ms, 0.5}, // since the read of two steps ago
             {"7250", "600", 1000ms, 1},  // a long phase ended
             {"10", "600", 1000ms, 0},    // counted from the start again
             {"110", "600", 1000ms, 0.1},
             {"", "600", 1000ms, 0},
             {"900", "600", 1000ms, 0}, // known again
             {"1000", "700", 2000ms, 0.05},
         })) {
        clock.advance(elapsed);
        setCounter(0, "package_throttle_total_time_ms", package);
        setCounter(1, "core_throttle_total_time_ms", core);
        const auto reading = counters.read();
        ASSERT_TRUE(reading);
        EXPECT_DOUBLE_EQ(reading->share, share) << package << " " << core;
    }
}

TEST_F(CpuThrottlingTest, CountersOfProcessorsThatComeAndGo) {
    ThrottleCounters counters(tree.roots(), clock.clock());
    EXPECT_FALSE(counters.read());
    setCounter(0, "core_throttle_total_time_ms", "100");
    clock.advance(1s);
    ASSERT_TRUE(counters.read()); // the folder of processors changed

    setCounter(0, "core_throttle_total_time_ms", "3100");
    clock.advance(30s); // everything is learnt anew, what was counted is not forgotten
    EXPECT_DOUBLE_EQ(counters.read().value().share, 0.1);

    tree.remove(processor(0) / "thermal_throttle");
    clock.advance(1s);
    EXPECT_FALSE(counters.read());
}

} // namespace
} // namespace cindertop::linux_platform
