#include "SteppedClock.h"
#include "TemporaryTree.h"
#include "context/HardwareText.h"
#include "platform/linux/LinuxProcessorClocks.h"

#include <gtest/gtest.h>

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace cindertop::linux_platform {
namespace {

/// Frequencies in MHz; `firmware` 0: its driver has no such limit.
struct PolicyCase {
    int allowed = 0;
    int possible = 0;
    int firmware = 0;
};

struct ClockCase {
    std::vector<PolicyCase> policies;
    std::string coolerType; ///< of an active cooling device; empty: none
    std::string percent;    ///< of intel_pstate; empty: none
    std::optional<std::string> text;
    bool areOld = false; ///< policies in the folders of their processors
};

std::filesystem::path policyPath(std::size_t number, bool isOld) {
    const std::filesystem::path processors = "sys/devices/system/cpu";
    return isOld ? processors / ("cpu" + std::to_string(number)) / "cpufreq"
                 : processors / "cpufreq" / ("policy" + std::to_string(number));
}

std::optional<std::string> heldBackOn(const ClockCase& machine) {
    const TemporaryTree tree;
    for (std::size_t number = 0; number < machine.policies.size(); ++number) {
        const auto& policy = machine.policies[number];
        const auto folder = policyPath(number, machine.areOld);
        tree.attribute(folder / "scaling_max_freq", std::to_string(policy.allowed * 1000));
        tree.attribute(folder / "cpuinfo_max_freq", std::to_string(policy.possible * 1000));
        if (policy.firmware != 0) {
            tree.attribute(folder / "bios_limit", std::to_string(policy.firmware * 1000));
        }
    }
    if (!machine.percent.empty()) {
        tree.attribute("sys/devices/system/cpu/intel_pstate/max_perf_pct", machine.percent);
    }
    if (!machine.coolerType.empty()) {
        const std::filesystem::path cooler = "sys/class/thermal/cooling_device0";
        tree.attribute(cooler / "type", machine.coolerType);
        tree.attribute(cooler / "cur_state", "2").attribute(cooler / "max_state", "7");
    }
    const SteppedClock clock;
    ThermalZones zones(tree.roots(), clock.clock());
    MachineHeat heat(tree.roots(), clock.clock(), zones);
    LinuxThermalPressureNotifications throttling(tree.roots(), clock.clock(), heat);
    LinuxProcessorClocks clocks(tree.roots(), clock.clock(), throttling);
    return heldBackText(speedLimits(clocks.read(), false));
}

TEST(LinuxProcessorClocks, TellWhatIsAllowedOfWhatIsPossible) {
    for (const auto& machine : std::to_array<ClockCase>({
             {{}, "", "", std::nullopt},
             {{{3400, 3400}, {3400, 3400}}, "", "", std::nullopt},
             {{{1200, 3400}, {1200, 3400}}, "cpufreq-cpu0", "", "Processor held to 1.2 of 3.4 GHz by heat"},
             {{{1200, 3400}, {1200, 3400}}, "Fan", "", "Processor held to 1.2 of 3.4 GHz"},
             {{{1200, 3400, 1200}}, "", "", "Processor held to 1.2 of 3.4 GHz by the firmware"},
             {{{1000, 3400, 1200}}, "", "", "Processor held to 1.0 of 3.4 GHz"},
             {{{1200, 3400}}, "", "", "Processor held to 1.2 of 3.4 GHz", true},
             // Cores of two kinds: the highest clock of all counts, and a cut of the slower ones is told as
             // theirs.
             {{{2000, 2000}, {1500, 3000}}, "cpufreq-cpu1", "", "Processor held to 2.0 of 3.0 GHz by heat"},
             {{{1000, 2000}, {3000, 3000}},
              "cpufreq-cpu0",
              "",
              "Slower cores held to 1.0 of 2.0 GHz by heat"},
             // The whole processor's setting, and values that no processor has.
             {{{4000, 4000}}, "", "50", "Processor held to 2.0 of 4.0 GHz"},
             {{{0, 3400}, {3400, 3400}}, "", "0x", std::nullopt},
             // Slowed down without a lower clock.
             {{{3400, 3400}}, "intel_powerclamp", "", "Processor slowed down by heat"},
         })) {
        EXPECT_EQ(heldBackOn(machine), machine.text) << machine.text.value_or("not held");
    }
}

} // namespace
} // namespace cindertop::linux_platform
