#include "SteppedClock.h"
#include "TemporaryTree.h"
#include "platform/linux/CpuCoolers.h"
#include "platform/linux/ThrottleCounters.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <initializer_list>
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

TEST_F(CpuThrottlingTest, TheFrequencyOfTheCoolersOwnProcessorsCounts) {
    const std::filesystem::path policies = "sys/devices/system/cpu/cpufreq";
    const auto cap = [&](const std::filesystem::path& policy, std::string_view allowed) {
        tree.attribute(policy / "scaling_max_freq", allowed)
            .attribute(policy / "cpuinfo_max_freq", "2000000");
    };
    cap(policies / "policy0", "500000"); // a user's
    cap(policies / "policy4", "1420000");
    tree.attribute(policies / "policy4/related_cpus", "4 5 16");

    struct Case {
        const char* type;
        const char* state;
        double loss;
    };

    const auto lossOf = [&](std::string_view type, std::string_view state) {
        addCooler(0, type, state, "15");
        return CpuCoolers(tree.roots(), clock.clock()).read().value().loss;
    };
    for (const auto& [type, state, loss] : std::to_array<Case>({
             {"cpufreq-cpu4", "9", 0.29},
             {"cpufreq-cpu4", "0", 0}, // nobody cools
             {"cpufreq-cpu5", "9", 0.29},
             {"cpufreq-cpu1", "8", 0.5}, // no policy lists it
             {"cpufreq-cpu6", "8", 0.5},
             {"thermal-cpufreq-1", "8", 0.5}, // which policy cannot be told
             {"Processor", "8", 0.5},
             {"intel_powerclamp", "8", 0.5},
             {"idle-cpu4", "8", 0.5},
         })) {
        EXPECT_DOUBLE_EQ(lossOf(type, state), loss) << type << " " << state;
    }

    // An ACPI processor leads to its number; it can throttle beyond what the frequency shows.
    tree.folder("sys/devices/system/cpu/cpu5").link("sys/devices/acpi/physical_node", "../system/cpu/cpu5");
    tree.link(cooler(0) / "device", "../../../devices/acpi");
    EXPECT_DOUBLE_EQ(lossOf("Processor", "8"), 0.29);
    cap(policies / "policy4", "2200000");
    EXPECT_DOUBLE_EQ(lossOf("Processor", "8"), 0.5);
    EXPECT_DOUBLE_EQ(lossOf("cpufreq-cpu4", "8"), 0);
    tree.attribute(policies / "policy4/cpuinfo_max_freq", "");
    EXPECT_DOUBLE_EQ(lossOf("cpufreq-cpu4", "8"), 0.5);

    tree.remove(policies / "policy4"); // the only policy is everybody's
    EXPECT_DOUBLE_EQ(lossOf("thermal-cpufreq-1", "8"), 0.75);
    cap(processor(3) / "cpufreq", "1000000"); // older kernels have no folder of policies
    EXPECT_DOUBLE_EQ(lossOf("cpufreq-cpu3", "1"), 0.5);
}

TEST_F(CpuThrottlingTest, CountersGiveTheirShareOfTheTimeBetweenReads) {
    setCounter(0, "package_throttle_total_time_ms", "5000");
    setCounter(0, "core_throttle_total_time_ms", "90000");
    setCounter(1, "core_throttle_total_time_ms", "100"); // without the package's counter
    ThrottleCounters counters(tree.roots(), clock.clock());

    struct Step {
        const char* package;
        const char* core;
        std::chrono::milliseconds elapsed;
        double loss;
    };

    for (const auto& [package, core, elapsed, loss] : std::to_array<Step>({
             {"5000", "100", 0ms, 0}, // the first read has nothing to compare with
             {"5250", "100", 1000ms, 0.25},
             {"9000", "100", 49ms, 0.25},  // too soon: the answer stays
             {"5250", "500", 951ms, 0.4},  // since the read of two steps ago
             {"6150", "500", 1000ms, 0.5}, // never more
             {"16150", "500", 1000ms, 0},  // the end of a long one, which began before
             {"10", "500", 1000ms, 0},     // counted from the start again
             {"110", "500", 1000ms, 0.1},
             {"", "500", 1000ms, 0},
             {"900", "500", 1000ms, 0}, // known again
             {"1000", "600", 2000ms, 0.05},
         })) {
        clock.advance(elapsed);
        setCounter(0, "package_throttle_total_time_ms", package);
        setCounter(1, "core_throttle_total_time_ms", core);
        const auto reading = counters.read(false);
        ASSERT_TRUE(reading);
        EXPECT_DOUBLE_EQ(reading->loss, loss) << package << " " << core;
    }
}

TEST_F(CpuThrottlingTest, AThrottlingShowsWhileItLastsAndNotAgainAtItsEnd) {
    struct Step {
        const char* count;
        const char* time;
        bool isHot;
        double loss;
    };

    const auto follow = [&](std::initializer_list<Step> steps) {
        setCounter(0, "package_throttle_count", "7");
        setCounter(0, "package_throttle_total_time_ms", "100");
        ThrottleCounters counters(tree.roots(), clock.clock());
        counters.read(true);
        for (const auto& [count, time, isHot, loss] : steps) {
            clock.advance(1s);
            setCounter(0, "package_throttle_count", count);
            setCounter(0, "package_throttle_total_time_ms", time);
            const auto reading = counters.read(isHot);
            ASSERT_TRUE(reading);
            EXPECT_DOUBLE_EQ(reading->loss, loss) << count << " " << time;
        }
    };
    follow({{"7", "100", true, 0}, // hot alone is no throttling
            {"8", "100", true, 0.25},
            {"8", "100", true, 0.25},
            {"8", "100", true, 0.25},
            {"8", "3400", true, 0}, // the kernel adds the whole time
            {"8", "3400", true, 0},
            {"9", "3400", true, 0.25},
            {"9", "3900", true, 0},    // a short one was told, too
            {"12", "4300", true, 0.4}, // several that came and went
            {"12", "4300", true, 0}});
    follow({{"8", "100", false, 0}, // a short spike, far from the limit: its time is never added
            {"8", "100", true, 0},
            {"9", "100", true, 0.25},
            {"9", "100", false, 0}, // cool again
            {"9", "100", true, 0}});
    follow({{"8", "", true, 0.25}, // older kernels have no time: no end would show
            {"8", "", true, 0},
            {"9", "", true, 0.25}});
}

TEST_F(CpuThrottlingTest, CountersOfProcessorsThatComeAndGo) {
    ThrottleCounters counters(tree.roots(), clock.clock());
    EXPECT_FALSE(counters.read(false));
    setCounter(0, "core_throttle_total_time_ms", "100");
    clock.advance(1s);
    ASSERT_TRUE(counters.read(false)); // the folder of processors changed

    setCounter(0, "core_throttle_total_time_ms", "3100");
    clock.advance(30s); // everything is learnt anew, what was counted is not forgotten
    EXPECT_DOUBLE_EQ(counters.read(false).value().loss, 0.1);

    tree.remove(processor(0) / "thermal_throttle");
    clock.advance(1s);
    EXPECT_FALSE(counters.read(false));
}

} // namespace
} // namespace cindertop::linux_platform
