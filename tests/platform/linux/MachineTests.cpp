#include "FixtureMachine.h"
#include "TemporaryTree.h"
#include "platform/linux/LinuxHostStatistics.h"
#include "platform/linux/LinuxProcessInformation.h"
#include "platform/linux/LinuxSystemValues.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>

#include <sched.h>
#include <unistd.h>

namespace cindertop::linux_platform {
namespace {

using namespace std::string_literals;

TEST(CpuLine, GroupsTheColumns) {
    struct Case {
        std::string_view text;
        std::optional<HostCpuLoad> load;
    };

    for (const auto& [text, load] : std::to_array<Case>({
             // user nice system idle iowait irq softirq steal guest guest_nice
             {"cpu  1 2 4 8 16 32 64 128 256 512\ncpu0 1\n", HostCpuLoad{1, 4 + 32 + 64, 8 + 16, 2}},
             {"cpu  1 2 4 8\n", HostCpuLoad{1, 4, 8, 2}},
             {"cpu  1 2 4 8 16 \n", HostCpuLoad{1, 4, 24, 2}},
             {"cpu  18446744073709551615 0 0 0\n", HostCpuLoad{18446744073709551615U, 0, 0, 0}},
             {"cpu  18446744073709551616 0 0 0\n", std::nullopt},
             {"cpu  0 0 18446744073709551615 0 0 1 0\n", std::nullopt},
             {"cpu  0 0 18446744073709551615 0 0 0 1\n", std::nullopt},
             {"cpu  0 0 0 18446744073709551615 1 0 0\n", std::nullopt},
             {"cpu  1 2 4\n", std::nullopt},
             {"cpu  1 2 4 8", std::nullopt}, // cut off: the last number may be longer
             {"cpu  1 2 4 -8\n", std::nullopt},
             {"cpu  1 2 4x 8\n", std::nullopt},
             {"cpu  1 2 4 8 x\n", std::nullopt},
             {"cpu0 1 2 4 8\n", std::nullopt},
             {"\ncpu  1 2 4 8\n", std::nullopt},
             {"", std::nullopt},
         })) {
        EXPECT_EQ(parseCpuLine(text), load) << text;
    }
}

TEST(LinuxHostStatistics, ReadsTheFirstLineOnly) {
    const TemporaryTree tree;
    const LinuxHostStatistics statistics(tree.roots());
    EXPECT_EQ(statistics.cpuLoad(), std::nullopt);
    EXPECT_FALSE(statistics.status().isAvailable);
    tree.write("proc/stat", "cpu  10 20 30 40\n" + std::string(1 << 20, 'x'));
    EXPECT_EQ(statistics.cpuLoad(), (HostCpuLoad{10, 30, 40, 20}));
    EXPECT_TRUE(statistics.status().isAvailable);
    EXPECT_EQ(LinuxHostStatistics(fixtureMachine("broken")).cpuLoad(), std::nullopt);
}

TEST(LinuxSystemValues, NamesTheMachine) {
    struct Case {
        std::string machine;
        std::optional<std::string> model, brand;
    };

    for (const auto& [machine, model, brand] : std::to_array<Case>({
             {"thinkpad", "ThinkPad T480", "Intel(R) Core(TM) i5-8350U CPU @ 1.70GHz"},
             {"amd-laptop", "Laptop 13 (AMD Ryzen 7040Series)", "AMD Ryzen 7 7840U w/ Radeon  780M Graphics"},
             {"apple-silicon", "Mac14,2", "Apple M2"},
             {"bare-vm", "Standard PC (Q35 + ICH9, 2009)", "Intel(R) Xeon(R) Processor @ 2.60GHz"},
             {"broken", std::nullopt, std::nullopt},
         })) {
        const LinuxSystemValues values(fixtureMachine(machine));
        EXPECT_EQ(values.text("hw.model"), model) << machine;
        EXPECT_EQ(values.text("machdep.cpu.brand_string"), brand) << machine;
        EXPECT_EQ(values.text("hw.memsize"), std::nullopt);
        EXPECT_EQ(values.status().isAvailable, model.has_value()) << machine;
    }
}

TEST(LinuxSystemValues, TrustsTheDeviceTreeBeforeTheBootLoader) {
    const TemporaryTree tree;
    tree.write("proc/device-tree/compatible", "apple,j815\0apple,t8142\0apple,arm-platform\0"s);
    tree.attribute("sys/class/dmi/id/product_name", "Made up by the boot loader");
    const LinuxSystemValues values(tree.roots());
    EXPECT_EQ(values.text("hw.model"), "Mac17,4");
    EXPECT_EQ(values.text("machdep.cpu.brand_string"), "Apple M5");
}

TEST(LinuxSystemValues, NamesOtherMachinesByDeviceTreeAndFirmware) {
    struct Case {
        std::string board, vendor, product, version;
        std::optional<std::string> model;
    };

    for (const auto& [board, vendor, product, version, model] : std::to_array<Case>({
             {"Lenovo Yoga Slim 7x\0"s, "LENOVO", "83ED", "Yoga Slim 7 14Q8X9", "Lenovo Yoga Slim 7x"},
             {"\0"s, "LENOVO", "83ED", "Yoga Slim 7 14Q8X9", "Yoga Slim 7 14Q8X9"},
             {"", "Lenovo", "20L5CTO1WW", "ThinkPad T480", "ThinkPad T480"},
             {"", "LENOVO", "20L5CTO1WW", "INVALID", "20L5CTO1WW"},
             {"", "Dell Inc.", "XPS 13 9310", "1.2", "XPS 13 9310"},
             {"", "LENOVO", "System Product Name", "System Version", std::nullopt},
             {"", "", "To Be Filled By O.E.M.", "", std::nullopt},
             {"", "", "Default string", "", std::nullopt},
             {"", "", "Not Applicable", "", std::nullopt},
             {"", "", "........", "", std::nullopt},
             {"", "", "$(DEFAULT_STRING)", "", std::nullopt},
             {"", "", "<Not Specified>", "", std::nullopt},
             {"", "", "System_Product-Name", "", std::nullopt},
             {"", "", "Product", "", std::nullopt},
             {"", "LENOVO", "80XL", "Lenovo", "80XL"},
             {"", "", "   ", "", std::nullopt},
         })) {
        const TemporaryTree tree;
        if (!board.empty()) {
            tree.write("proc/device-tree/model", board);
        }
        const std::filesystem::path dmi = "sys/class/dmi/id";
        tree.attribute(dmi / "sys_vendor", vendor).attribute(dmi / "product_name", product);
        tree.attribute(dmi / "product_version", version);
        EXPECT_EQ(LinuxSystemValues(tree.roots()).text("hw.model"), model) << product;
    }
}

TEST(LinuxSystemValues, NamesArmProcessorsByTheirChip) {
    struct Case {
        const char *cpuinfo, *machine, *family;
        std::string compatible;
        std::optional<std::string> brand;
    };

    const auto board = "acme,tablet\0qcom,x1e80100\0"s;
    for (const auto& [cpuinfo, machine, family, compatible, brand] : std::to_array<Case>({
             {"model name\t: Acme X\n", "SC8280XP", "Snapdragon", board, "Acme X"},
             {"model name\t: Acme Y", "", "", board, "Acme Y"}, // the file's end
             {"CPU part\t: 0xd0b\n", "SC8280XP", "Snapdragon", board, "SC8280XP"},
             {"model name\t: ARMv7 Processor rev 4 (v7l)\n", "", "Tegra", board, "Tegra"},
             {"", "Acme Tablet", "Tegra", board, "Tegra"}, // the board's name is not the chip's
             {"", "", "jep106:0426", board, "X1E80100"},   // the maker's number
             {"", "", "", board, "X1E80100"},
             {"", "", "", "apple,j314s\0apple,t6000\0apple,arm-platform\0"s, "T6000"},
             {"", "", "", "acme,tablet\0"s, std::nullopt},
             {"", "", "", "", std::nullopt},
         })) {
        const TemporaryTree tree;
        tree.write("proc/cpuinfo", cpuinfo).write("proc/device-tree/compatible", compatible);
        tree.write("proc/device-tree/model", "Acme Tablet\0"s);
        tree.attribute("sys/devices/soc0/machine", machine).attribute("sys/devices/soc0/family", family);
        EXPECT_EQ(LinuxSystemValues(tree.roots()).text("machdep.cpu.brand_string"), brand)
            << machine << family;
    }
}

TEST(MachineIdentity, KnowsWhatItListsOnly) {
    EXPECT_EQ(parseCompatible("a\0\0b\0c"s), (std::vector<std::string>{"a", "b", "c"}));
    EXPECT_EQ(appleModelIdentifier({"apple,j293", "apple,t8103"}), std::nullopt);
    EXPECT_EQ(appleChipBrand({"apple,j293", "apple,t8103"}), "Apple M1");
    EXPECT_EQ(appleChipBrand({"apple,j314s", "apple,t6000"}), std::nullopt);
    EXPECT_EQ(parseProcessorModel("processor\t: 0\nmodel\t\t: 142\nmodel name\t: A: B\n"), "A: B");
    EXPECT_EQ(parseProcessorModel("model name\t:\n"), std::nullopt);
    EXPECT_EQ(parseProcessorModel("model name\t: cut of"), std::nullopt);
}

TEST(LinuxProcessInformation, AnswersForThisProcess) {
    const TemporaryTree tree;
    tree.attribute("sys/firmware/acpi/platform_profile", "low-power");
    SystemBus bus(steadyClock(), "unix:path=" + (tree.path() / "no-bus").string());
    PowerProfile profile(bus, tree.roots());
    int state = 2;
    const LinuxProcessInformation information([&] { return state; }, profile, "app.example");
    EXPECT_EQ(information.thermalState(), 2);
    state = -1;
    EXPECT_EQ(information.thermalState(), -1);
    EXPECT_TRUE(information.isLowPowerModeEnabled());
    EXPECT_EQ(information.processIdentifier(), ::getpid());
    EXPECT_EQ(information.bundleIdentifier(), "app.example");
}

TEST(LinuxProcessInformation, CountsTheProcessorsItMayUse) {
    const TemporaryTree tree;
    SystemBus bus(steadyClock(), "unix:path=" + (tree.path() / "no-bus").string());
    PowerProfile profile(bus, tree.roots());
    const LinuxProcessInformation information([] { return 0; }, profile, std::nullopt);

    cpu_set_t before;
    ASSERT_EQ(::sched_getaffinity(0, sizeof before, &before), 0);
    EXPECT_EQ(information.activeProcessorCount(), CPU_COUNT(&before));
    cpu_set_t one;
    CPU_ZERO(&one);
    CPU_SET(static_cast<unsigned>(::sched_getcpu()), &one);
    ASSERT_EQ(::sched_setaffinity(0, sizeof one, &one), 0);
    EXPECT_EQ(information.activeProcessorCount(), 1);
    ASSERT_EQ(::sched_setaffinity(0, sizeof before, &before), 0);
}

} // namespace
} // namespace cindertop::linux_platform
