#include "platform/linux/SensorNames.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <iterator>

namespace cindertop::linux_platform {
namespace {

using enum SensorOrigin;
using Names = std::vector<std::string>;

SensorSource chipSource(std::string_view name, std::string_view label, std::string_view device = "",
                        std::string_view group = "hwmon0") {
    return {.origin = chip,
            .chip = std::string(name),
            .label = std::string(label),
            .device = std::string(device),
            .group = std::string(group)};
}

SensorSource zoneSource(std::string_view type, std::string_view group = "thermal_zone0") {
    return {
        .origin = zone, .chip = std::string(type), .label = {}, .device = {}, .group = std::string(group)};
}

Names namesOf(std::vector<SensorSource> sources) {
    Names names;
    std::ranges::transform(namedSensors(sources), std::back_inserter(names), &NamedSensor::name);
    return names;
}

TEST(SensorNames, NameEverySensorWorthShowing) {
    struct Case {
        SensorSource source;
        Names names;
    };

    for (const auto& [source, names] : std::to_array<Case>({
             {chipSource("coretemp", "Package id 0"), {"CPU Package 0"}},
             {chipSource("coretemp", "Physical id 1"), {"CPU Package 1"}},
             {chipSource("coretemp", "Core 12"), {"CPU Core 12"}},
             {chipSource("k10temp", "Tdie"), {"CPU Die"}},
             {chipSource("zenpower", "Tctl"), {"CPU Control"}},
             {chipSource("k10temp", "Tccd8"), {"CPU CCD 8"}},
             {chipSource("k10temp", ""), {"CPU Control"}},
             {zoneSource("x86_pkg_temp"), {"CPU Package"}},
             {zoneSource("cpu-thermal"), {"CPU Cluster cpu"}},
             {zoneSource("cpu0-thermal"), {"CPU Cluster cpu0"}},
             {zoneSource("bigcore1-thermal"), {"CPU Cluster bigcore1"}},
             {zoneSource("CPU-therm"), {"CPU Cluster CPU"}},
             {zoneSource("bcm2835_thermal"), {"CPU Cluster bcm2835"}},
             {zoneSource("soc-thermal"), {"CPU Zone"}},
             {zoneSource("acpitz"), {"CPU Zone"}},
             {chipSource("amdgpu", "edge"), {"GPU Edge"}},
             {chipSource("amdgpu", "junction"), {"GPU Junction"}},
             {chipSource("amdgpu", "mem"), {"GPU Memory"}},
             {chipSource("nouveau", ""), {"GPU"}},
             {chipSource("radeon", ""), {"GPU"}},
             {chipSource("i915", ""), {"GPU"}},
             {chipSource("xe", "pkg"), {"GPU Package"}},
             {chipSource("xe", "vram"), {"GPU Memory"}},
             {zoneSource("gpu-thermal"), {"GPU"}},
             {zoneSource("gpucore-thermal"), {"GPU"}},
             {chipSource("nvme", "Composite", "nvme0"), {"SSD Composite (nvme0)"}},
             {chipSource("nvme", "Sensor 2", "nvme1"), {"SSD Sensor 2 (nvme1)"}},
             {chipSource("nvme", "Composite"), {"SSD Composite"}}, // the drive cannot be told
             {chipSource("drivetemp", "", "sda"), {"SSD or HDD drive (sda)"}},
             {chipSource("steamdeck_hwmon", "Battery Temp"), {"Battery"}},
             {chipSource("BAT1", "temp"), {"Battery"}},
             {chipSource("macsmc_battery", "temp"), {"Battery"}},
             {chipSource("macsmc_hwmon", "NAND Flash Temperature"), {"NAND Flash"}},
             {chipSource("macsmc_hwmon", "Battery Hotspot"), {"Battery Hotspot"}},
             {chipSource("macsmc_hwmon", "Charge Regulator Temp"), {"Charger Regulator"}},
             {{.origin = supply, .chip = "macsmc-battery", .label = "temp", .device = {}, .group = {}},
              {"Battery"}},
             {zoneSource("pm8998-thermal"), {"PMU pm8998"}},
             {zoneSource("VRM"), {"Power VRM"}},
             {zoneSource("TSKN"), {"Skin"}},
             {zoneSource("quiet-skin-thermal"), {"Skin"}},
             // left out: Wi-Fi, network, memory, board chips, and what nobody knows
             {chipSource("macsmc_hwmon", "WiFi/BT Module Temp"), {}},
             {chipSource("iwlwifi_1", ""), {}},
             {zoneSource("iwlwifi_1"), {}},
             {chipSource("mt7921_phy0", ""), {}},
             {chipSource("ath11k_hwmon", ""), {}},
             {chipSource("jc42", ""), {}},
             {chipSource("spd5118", ""), {}},
             {chipSource("thinkpad", "CPU"), {}},
             {chipSource("nct6798", "CPUTIN"), {}},
             {chipSource("BAT0", ""), {}},
             {zoneSource("B0D4"), {}},
             {zoneSource(""), {}},
             {chipSource("coretemp", ""), {}},
             {chipSource("coretemp", "Core "), {}},
             {chipSource("coretemp", "Core x"), {}},
             {chipSource("coretemp", "Core 1 "), {}},
             {chipSource("mycoretemp", "Core 1"), {}},
             {chipSource("coretemp", "Core " + std::string(100, '1')), {}},
             {zoneSource("cpu" + std::string(5000, '-')), {}},
         })) {
        EXPECT_EQ(namesOf({source}), names) << source.chip << " " << source.label;
    }
}

TEST(SensorNames, StandInForBetterOnesOnly) {
    EXPECT_EQ(namesOf({zoneSource("acpitz"), zoneSource("x86_pkg_temp"), chipSource("coretemp", "Core 0")}),
              (Names{"CPU Core 0"}));
    EXPECT_EQ(namesOf({zoneSource("acpitz"), zoneSource("x86_pkg_temp")}), (Names{"CPU Package"}));
    EXPECT_EQ(namesOf({zoneSource("soc-thermal"), zoneSource("cpu-thermal"), zoneSource("acpitz")}),
              (Names{"CPU Zone", "CPU Cluster cpu"}));
    EXPECT_EQ(namesOf({zoneSource("cpu0-thermal"), chipSource("k10temp", "Tctl")}), (Names{"CPU Control"}));
    EXPECT_EQ(namesOf({zoneSource("acpitz"), chipSource("amdgpu", "edge")}), (Names{"CPU Zone", "GPU Edge"}));
}

TEST(SensorNames, AreTheSecondChannelOfATabletsChip) {
    auto remote = chipSource("nct1008", "");
    remote.channel = 2;
    EXPECT_EQ(namesOf({chipSource("nct1008", ""), remote}), (Names{"CPU Cluster nct1008"}));
    EXPECT_EQ(namesOf({remote, chipSource("coretemp", "Core 0")}), (Names{"CPU Core 0"}));
}

TEST(SensorNames, TellSeveralPackagesApart) {
    const auto core = [](std::string_view label, std::string_view device, std::string_view group) {
        return chipSource("coretemp", label, device, group);
    };
    EXPECT_EQ(namesOf({core("Core 0", "coretemp.0", "hwmon3"), core("Package id 1", "coretemp.1", "hwmon7"),
                       core("Core 2", "coretemp.1", "hwmon7"), core("Package id 0", "coretemp.0", "hwmon3")}),
              (Names{"CPU 0 Core 0", "CPU Package 1", "CPU 1 Core 2", "CPU Package 0"}));
    // Before packages had sensors, one processor made a chip of each core.
    EXPECT_EQ(namesOf({core("Core 0", "coretemp.0", "hwmon0"), core("Core 1", "coretemp.1", "hwmon1")}),
              (Names{"CPU Core 0", "CPU Core 1"}));
    EXPECT_EQ(namesOf({core("Core 0", "coretemp.0", "hwmon0"), core("Core 0", "coretemp.4", "hwmon1")}),
              (Names{"CPU 0 Core 0", "CPU 4 Core 0"}));
}

TEST(SensorNames, NeverBearTheSameName) {
    struct Case {
        std::vector<SensorSource> sources;
        Names names;
    };

    auto second = chipSource("coretemp", "Core 0");
    second.channel = 6;
    const auto battery = [](std::string_view name) {
        return SensorSource{.origin = supply,
                            .chip = std::string(name),
                            .label = "temp",
                            .device = {},
                            .group = std::string(name)};
    };
    for (const auto& [sources, names] : std::to_array<Case>({
             {{zoneSource("acpitz", "thermal_zone0"), zoneSource("acpitz", "thermal_zone4")},
              {"CPU Zone 0", "CPU Zone 4"}},
             {{zoneSource("gpuss-0-thermal"), zoneSource("gpuss-3-thermal", "thermal_zone9")},
              {"GPU 0", "GPU 3"}},
             {{zoneSource("soc_dts0"), zoneSource("soc_dts1")}, {"CPU Zone 0", "CPU Zone 1"}},
             {{zoneSource("gpu-top-thermal"), zoneSource("gpu-bottom-thermal")},
              {"GPU gpu-top", "GPU gpu-bottom"}},
             {{zoneSource("gpu-thermal"), chipSource("nouveau", "")}, {"GPU gpu", "GPU nouveau"}},
             {{zoneSource("x86_pkg_temp", "thermal_zone2"), zoneSource("x86_pkg_temp", "thermal_zone3")},
              {"CPU Package 2", "CPU Package 3"}},
             {{chipSource("amdgpu", "edge", "", "hwmon2"), chipSource("amdgpu", "edge", "", "hwmon5")},
              {"GPU Edge 2", "GPU Edge 5"}},
             {{chipSource("k10temp", "Tctl", "", "hwmon0"), chipSource("k10temp", "Tctl", "", "hwmon1")},
              {"CPU Control 0", "CPU Control 1"}},
             {{battery("BAT0"), battery("BAT1")}, {"Battery 0", "Battery 1"}},
             {{battery("BAT0"), battery("CMB0")}, {"Battery BAT0", "Battery CMB0"}},
             {{chipSource("coretemp", "Core 0"), second}, {"CPU Core 0 hwmon0.1", "CPU Core 0 hwmon0.6"}},
             {{zoneSource("TSKN"), zoneSource("quiet-skin-thermal")}, {"Skin TSKN", "Skin quiet-skin"}},
         })) {
        EXPECT_EQ(namesOf(sources), names) << names[0];
    }
}

TEST(SensorNames, ShowTheControlTemperatureWhereThatChipHasNoDie) {
    EXPECT_EQ(
        namesOf({chipSource("k10temp", "Tctl", "", "hwmon1"), chipSource("k10temp", "Tdie", "", "hwmon1"),
                 chipSource("k10temp", "Tctl", "", "hwmon2")}),
        (Names{"CPU Die", "CPU Control"}));
}

TEST(SensorNames, FindTheirFilesAndCopies) {
    EXPECT_EQ(parseTemperatureInput("temp1_input"), 1);
    EXPECT_EQ(parseTemperatureInput("temp14_input"), 14);
    for (const auto* const file : {"temp_input", "temp1_label", "temp1_input_", "in1_input", "tempx_input",
                                   "temp99999999999999999999_input", "temp1000_input"}) {
        EXPECT_EQ(parseTemperatureInput(file), std::nullopt) << file;
    }
    EXPECT_TRUE(isHwmonNameOf("macsmc_battery", "macsmc-battery"));
    EXPECT_TRUE(isHwmonNameOf("cpu_thermal", "cpu-thermal"));
    EXPECT_FALSE(isHwmonNameOf("cpu_thermal", "cpu-thermal1"));
    EXPECT_FALSE(isHwmonNameOf("coretemp", "acpitz"));
}

} // namespace
} // namespace cindertop::linux_platform
