#include "MachineTree.h"
#include "SteppedClock.h"
#include "platform/linux/HwmonSensors.h"
#include "platform/linux/LinuxSystemValues.h"
#include "platform/linux/LinuxTemperatureEvents.h"
#include "platform/linux/LinuxThermalPressureNotifications.h"
#include "platform/linux/MachineHeat.h"
#include "support/Enumeration.h"
#include "thermal/ThermalProviders.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace cindertop::linux_platform {
namespace {

using Sensors = std::vector<std::string>; // "kind: name"

struct MachineCase {
    const char* name;
    int state;
    std::optional<std::uint64_t> pressure; ///< none: nothing on the machine tells
    Sensors sensors;                       ///< that answer
    std::optional<std::string> model;
    std::optional<std::string> processor;
};

/// What the readers answer on one machine.
class ReadMachine {
public:
    explicit ReadMachine(std::string_view name) : tree_(name) { sensors_.setObserved(true); }

    int state() { return heat_.read().state; }

    std::optional<std::uint64_t> pressure() {
        const auto registration = pressure_.registerCheck("com.apple.system.thermalpressurelevel");
        return registration.status == 0 ? std::optional(pressure_.state(registration.token).raw)
                                        : std::nullopt;
    }

    Sensors sensors() {
        Sensors sensors;
        for (const auto& reading : ExperimentalSensorTemperatureProvider(events_).readTemperatures()) {
            sensors.push_back(std::string(rawValue(reading.kind)) + ": " + reading.label);
        }
        return sensors;
    }

    std::optional<std::string> value(std::string_view name) const {
        return LinuxSystemValues(tree_.roots()).text(name);
    }

private:
    MachineTree tree_;
    SteppedClock clock_;
    ThermalZones zones_{tree_.roots(), clock_.clock()};
    MachineHeat heat_{tree_.roots(), clock_.clock(), zones_};
    LinuxThermalPressureNotifications pressure_{tree_.roots(), clock_.clock(), heat_};
    HwmonSensors sensors_{tree_.roots(), clock_.clock(), zones_};
    LinuxTemperatureEvents events_{sensors_};
};

class Machines : public testing::TestWithParam<MachineCase> {};

TEST_P(Machines, TellTheirHeatTheirSensorsAndTheirNames) {
    const auto& expected = GetParam();
    ReadMachine machine(expected.name);
    EXPECT_EQ(machine.state(), expected.state);
    EXPECT_EQ(machine.pressure(), expected.pressure);
    EXPECT_EQ(machine.sensors(), expected.sensors);
    EXPECT_EQ(machine.value("hw.model"), expected.model);
    EXPECT_EQ(machine.value("machdep.cpu.brand_string"), expected.processor);
}

INSTANTIATE_TEST_SUITE_P(
    OfPeople, Machines,
    testing::ValuesIn(std::to_array<MachineCase>({
        // The governor holds 80 °C and woke at 68: within ten degrees, and above a trip that does not act.
        {"chromebook-mt8183-fanless-busy",
         1,
         1,
         {"cpu: CPU Cluster cpu", "battery: Battery"},
         "Google krane sku176 board",
         "MT8183"},
        {"chromebook-fanless-dptf", // a zone of a program above its trip; 71 °C is far from the processor's
         1,                         // limit; what programs set (TCPU_PCI, x86_pkg_temp) does not count
         1,
         {"cpu: CPU Package 0", "cpu: CPU Core 0", "cpu: CPU Core 2"},
         "Phaser360",
         "Intel(R) Pentium(R) Silver N5000 CPU @ 1.10GHz"},
        {"gigabyte-z370-desktop", // "critical" at 18.8 °C is none
         0,
         std::nullopt,
         {"cpu: CPU Package 0", "cpu: CPU Core 0", "cpu: CPU Core 1", "cpu: CPU Core 2", "cpu: CPU Core 3"},
         "Z370 HD3P",
         std::nullopt},
        {"pixelbook-go-fanless-hot", // no zone has a trip; the processor is 9 °C below its limit
         1,
         std::nullopt,
         {"cpu: CPU Package 0", "cpu: CPU Core 0", "cpu: CPU Core 1"},
         "Atlas",
         std::nullopt},
        {"raspberry-pi-5-idle", // the fan's trips are no heat
         0,
         std::nullopt,
         {"cpu: CPU Cluster cpu"},
         "Raspberry Pi 5 Model B Rev 1.0",
         "BCM2712"},
        {"steam-deck",
         0,
         std::nullopt,
         {"storage: SSD Composite (nvme0)", "storage: SSD Sensor 1 (nvme0)", "gpu: GPU Edge",
          "battery: Battery", "cpu: CPU Zone"},
         "Jupiter",
         std::nullopt},
        {"thinkpad-p14s-g2-amd-usbc", -1, std::nullopt, {}, "ThinkPad P14s Gen 2a", std::nullopt},
        {"toshiba-satellite-2010", // its processors cannot be cooled, its fans run from 42 °C on
         0,
         std::nullopt,
         {"cpu: CPU Zone"},
         std::nullopt,
         std::nullopt},
        {"yoga-slim-7x-full-load-old-kernel", // above passive trips to which nothing is bound
         1,
         1,
         {"cpu: CPU Cluster cpu0-0-top", "cpu: CPU Cluster cpu0-0-btm", "cpu: CPU Cluster cpuss0-top",
          "gpu: GPU 0", "gpu: GPU 1", "battery: Battery"},
         "Lenovo Yoga Slim 7x",
         "X1E80100"},
        {"surface-like-tablet", // 1 °C below the processor's limit
         2,
         2,
         {"cpu: CPU Package 0", "cpu: CPU Core 0", "cpu: CPU Core 1"},
         "Tablet Pro",
         "Intel(R) Core(TM) i5-7300U CPU @ 2.60GHz"},
        {"ryzen-fanless-box", // a passive trip that acts; the other card sleeps, a rotating disk is not asked
         2,
         2,
         {"cpu: CPU Die", "gpu: GPU Edge 1", "storage: SSD or HDD drive (sdb)"},
         std::nullopt,
         "AMD Ryzen Embedded R1606G with Radeon Vega Gfx"},
        {"arm-board-big-little", // 21 % of the big cores' frequency is gone; the little ones' cap is a user's
         1,
         1,
         {"cpu: CPU Cluster cpu", "gpu: GPU"},
         "Pine64 Pinebook Pro",
         "RK3399"},
        {"two-processor-packages",
         1,
         1,
         {"cpu: CPU Package 0", "cpu: CPU 0 Core 0", "cpu: CPU 0 Core 8", "cpu: CPU Package 1",
          "cpu: CPU 1 Core 0", "cpu: CPU 1 Core 8"},
         std::nullopt,
         "Intel(R) Xeon(R) Gold 6130 CPU @ 2.10GHz"},
    })),
    [](const auto& machine) {
        std::string name = machine.param.name;
        std::erase(name, '-');
        return name;
    });

} // namespace
} // namespace cindertop::linux_platform
