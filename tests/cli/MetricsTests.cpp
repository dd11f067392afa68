#include "cli/MetricsFile.h"
#include "cli/MetricsText.h"
#include "fakes/TemporaryFolder.h"
#include "report/Snapshots.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>

namespace cindertop::cli {
namespace {

using testing::HasSubstr;
using testing::Not;

/// The samples, without the lines that explain them and without the version.
std::string samples(const std::string& text) {
    std::istringstream lines(text);
    std::string kept;
    for (std::string line; std::getline(lines, line);) {
        if (!line.starts_with('#') && !line.starts_with("cindertop_build_info{")) {
            kept += line + '\n';
        }
    }
    return kept;
}

ThermalMonitoringSnapshot someDay() {
    auto day = ThermalDailySummary::fresh("2027-01-15", snapshotStart);
    day.levelDurations = ThermalLevelDurations(3600.5, 60, 125, 0);
    day.throttlingEpisodeCount = 2;
    return {{}, day, snapshotStart};
}

TEST(Metrics, TellWattsClocksAndFansWhereTheyAreKnown) {
    auto report = MachineReport{hotLaptop()};
    EXPECT_FALSE(metricsText(report, someDay(), MetricsDetail::categories).contains("_watts"));
    report.snapshot.context.hardware = {
        .meters = {.machineWatts = 12.4,
                   .chips = {{.name = "Graphics chip", .watts = 3.5}},
                   .fans = {{.name = "Fan 1", .revolutionsPerMinute = 0}}},
        .processor = {.clock = ClockLimit{.allowedHertz = 1'200'000'000, .possibleHertz = 3'400'000'000},
                      .heldBy = HoldReason::powerSaver}};
    EXPECT_TRUE(samples(metricsText(report, someDay(), MetricsDetail::categories))
                    .contains(R"(cindertop_machine_power_watts 12.4
cindertop_chip_power_watts{chip="Graphics chip"} 3.5
cindertop_fan_rpm{fan="Fan 1"} 0
cindertop_processor_allowed_hertz 1.2e+09
cindertop_processor_possible_hertz 3.4e+09
cindertop_processor_held_back{reason="heat"} 0
cindertop_processor_held_back{reason="powerSaver"} 1
cindertop_processor_held_back{reason="firmware"} 0
cindertop_processor_held_back{reason="unknown"} 0
)"));
}

TEST(Metrics, TellEveryFactInBaseUnits) {
    EXPECT_EQ(samples(metricsText({hotLaptop()}, someDay(), MetricsDetail::applications)),
              R"(cindertop_score 78
cindertop_level{level="normal"} 0
cindertop_level{level="fair"} 0
cindertop_level{level="serious"} 1
cindertop_level{level="critical"} 0
cindertop_thermal_state{state="nominal"} 0
cindertop_thermal_state{state="fair"} 0
cindertop_thermal_state{state="serious"} 1
cindertop_thermal_state{state="critical"} 0
cindertop_pressure{pressure="nominal"} 0
cindertop_pressure{pressure="moderate"} 0
cindertop_pressure{pressure="heavy"} 1
cindertop_pressure{pressure="critical"} 0
cindertop_pressure_sustained 1
cindertop_temperature_celsius{sensor="GPU",kind="gpu"} 61
cindertop_temperature_celsius{sensor="CPU Package 0",kind="cpu"} 96.5
cindertop_external_power 0
cindertop_power_saver 1
cindertop_battery_charge_ratio 0.57
cindertop_battery_charging 0
cindertop_battery_temperature_celsius 36.25
cindertop_cpu_ratio 0.41
cindertop_category_cpu_ratio{category="userApplication"} 0
cindertop_category_cpu_ratio{category="browserWorkload"} 0.3325
cindertop_category_cpu_ratio{category="developerWorkload"} 0
cindertop_category_cpu_ratio{category="indexingOrSetup"} 0
cindertop_category_cpu_ratio{category="backgroundSystem"} 0
cindertop_category_cpu_ratio{category="system"} 1e-04
cindertop_category_cpu_ratio{category="unknown"} 0
cindertop_application_cpu_ratio{application="Browser"} 0.3325
cindertop_application_cpu_ratio{application="System"} 1e-04
cindertop_level_seconds_total{level="normal"} 3600.5
cindertop_level_seconds_total{level="fair"} 60
cindertop_level_seconds_total{level="serious"} 125
cindertop_level_seconds_total{level="critical"} 0
cindertop_throttling_episodes_total 2
cindertop_critical_episodes_total 0
)");
}

TEST(Metrics, HaveNoSeriesForWhatIsNotKnown) {
    EXPECT_EQ(samples(metricsText({unknownMachine()}, ThermalMonitoringSnapshot::empty(),
                                  MetricsDetail::applications)),
              "");
    auto machine = unknownMachine();
    machine.sources = {{std::string(powerProfileSource), true, "a service"}};
    EXPECT_EQ(
        samples(metricsText({machine}, ThermalMonitoringSnapshot::empty(), MetricsDetail::applications)),
        "cindertop_power_saver 0\n");
}

TEST(Metrics, DoNotCallALevelShortThatMayHaveLasted) {
    const auto& empty = ThermalMonitoringSnapshot::empty();
    auto machine = hotLaptop();
    machine.context.sustainedPressure = SustainedThermalPressureSnapshot::inactive();
    const auto sustained = HasSubstr("cindertop_pressure_sustained 0\n");
    EXPECT_THAT(metricsText({machine}, empty, MetricsDetail::categories), Not(sustained)) << "begun just now";
    EXPECT_THAT(metricsText({machine, MachineAdvice{}}, empty, MetricsDetail::categories), sustained);
    machine.score.level = ThermalLevel::fair;
    EXPECT_THAT(metricsText({machine}, empty, MetricsDetail::categories), sustained);
}

TEST(Metrics, CountNoTimeThatNobodyMeasured) {
    auto day = someDay();
    day.todaySummary.levelDurations = ThermalLevelDurations(3600, 0, 0, 0);
    EXPECT_THAT(metricsText({hotLaptop()}, day, MetricsDetail::categories), Not(HasSubstr("level_seconds")));
}

TEST(Metrics, NameApplicationsOnlyWhenAsked) {
    const auto text = metricsText({hotLaptop()}, someDay(), MetricsDetail::categories);
    EXPECT_THAT(text, Not(HasSubstr("Browser")));
    EXPECT_THAT(text, HasSubstr("category=\"browserWorkload\"} 0.3325\n"));
}

TEST(Metrics, KeepSeriesApartAndLabelsWhole) {
    auto machine = hotLaptop();
    machine.temperatures = {{"a", "NVMe", 40, ThermalSensorKind::storage},
                            {"b", "NVMe", 41, ThermalSensorKind::storage},
                            {"c", "\"C:\\\"\n\xFF", -5.5, ThermalSensorKind::other}};
    machine.offenders.offenders[0].graphicsPercent = 12.5;
    machine.offenders.offenders.push_back(machine.offenders.offenders[0]);
    const auto text = metricsText({machine}, someDay(), MetricsDetail::applications);
    EXPECT_THAT(text, HasSubstr("{sensor=\"NVMe\",kind=\"storage\"} 40\n"
                                "cindertop_temperature_celsius{sensor=\"NVMe 2\",kind=\"storage\"} 41\n"
                                R"(cindertop_temperature_celsius{sensor="\"C:\\\"\n)"
                                "\uFFFD\",kind=\"other\"} -5.5\n"));
    EXPECT_THAT(text, HasSubstr("{application=\"Browser\"} 0.665\n"));
    EXPECT_THAT(text, HasSubstr("cindertop_application_gpu_ratio{application=\"Browser\"} 0.125\n"));
}

TEST(MetricsFile, IsWholeReadableByOthersAndGoesWithItsKeeper) {
    const fakes::TemporaryFolder folder;
    const auto path = folder / "cindertop.prom";
    {
        MetricsFile file(path);
        ASSERT_TRUE(file.replace("a 1\n"));
        std::ifstream former(path);
        ASSERT_TRUE(file.replace("b 2\n"));
        EXPECT_EQ(std::string(std::istreambuf_iterator<char>(former), {}),
                  "a 1\n"); // whoever reads it reads on
        EXPECT_EQ(fakes::textOf(path), "b 2\n");
        EXPECT_EQ(std::filesystem::status(path).permissions(), std::filesystem::perms(0644));
    }
    EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
    const auto failed = MetricsFile(folder.path() / "missing" / "cindertop.prom").replace("c 3\n");
    ASSERT_FALSE(failed);
    EXPECT_EQ(failed.error().code, ENOENT);

    fakes::writeText(path, "another keeper's\n");
    {
        const MetricsFile unwritten(path);
    }
    EXPECT_EQ(fakes::textOf(path), "another keeper's\n");
}

} // namespace
} // namespace cindertop::cli
