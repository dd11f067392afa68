#pragma once

#include "app/MachineSampler.h"

#include <chrono>
#include <string>

namespace cindertop {

inline constexpr Instant snapshotStart{std::chrono::seconds{1'800'000'000}};

/// A laptop in which every fact is known.
inline MachineSnapshot hotLaptop() {
    using namespace std::chrono_literals;
    const auto now = snapshotStart + 12'345ms;
    const ProcessOffender browser({.id = "bundle:org.example.browser",
                                   .displayName = "Browser",
                                   .bundleIdentifier = "org.example.browser",
                                   .appBundlePath = "/usr/share/applications/org.example.browser.desktop",
                                   .representativeProcessIdentifier = 4711,
                                   .processCount = 6,
                                   .cpuPercent = 33.25,
                                   .category = ProcessOffenderCategory::browserWorkload,
                                   .canTerminateApplication = true,
                                   .children = {{4711, 1, "browser", 30.5, false, snapshotStart - 1500ms},
                                                {4712, 4711, "tab", 2.75, false, {}}},
                                   .history = {{now - 3s, 10.0}, {now, 33.25}},
                                   .startedAt = snapshotStart - 1500ms});
    const ProcessOffender kernel({.id = "system",
                                  .displayName = "System",
                                  .representativeProcessIdentifier = 77,
                                  .processCount = 1,
                                  .cpuPercent = 0.01,
                                  .category = ProcessOffenderCategory::system,
                                  .children = {{77, 2, "kworker/0:1", 0.01, true, {}}},
                                  .history = {{now, 0.01}}});
    return {
        .score = {78, ThermalLevel::serious, 0.45, true, 5, 96.5, ThermalDataSource::mixed,
                  SystemThermalState::serious, ThermalPressureLevel::heavy, ThermalTrend::rising, now},
        .context = {.displays = {true, 1, 0, 1},
                    .power = {true, PowerSourceKind::batteryPower, 57, false, false, true, 36.25,
                              BatteryTemperatureLevel::warm},
                    .sustainedPressure = {true, Seconds{125.5}, ThermalLevel::serious, ThermalLevel::serious},
                    .measuredAt = now},
        .offenders = {.state = ProcessOffenderSnapshotState::ready,
                      .offenders = {browser, kernel},
                      .isIndexingOrSetupLikely = true,
                      .measuredAt = now},
        .cpuPercent = 41.0,
        .temperatures = {{"GPU", "GPU", 61, ThermalSensorKind::gpu},
                         {"CPU Package 0", "CPU Package 0", 96.5, ThermalSensorKind::cpu}},
        .sources = {{"thermal zones", true, "2 zones"}, {"lid", false, "no lid switch"}},
        .measuredAt = now};
}

/// A machine that tells nothing at all.
inline MachineSnapshot unknownMachine() {
    return {.score = {0, ThermalLevel::normal, 0, false, 0.5, std::nullopt, ThermalDataSource::official,
                      SystemThermalState::unavailable, ThermalPressureLevel::unavailable,
                      ThermalTrend::stable, snapshotStart},
            .context = SystemContextSnapshot::placeholder(),
            .offenders = ProcessOffenderSnapshot::empty(),
            .cpuPercent = std::nullopt,
            .temperatures = {},
            .sources = {},
            .measuredAt = snapshotStart};
}

} // namespace cindertop
