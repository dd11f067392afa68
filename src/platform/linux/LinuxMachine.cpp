#include "platform/linux/LinuxMachine.h"

#include "platform/linux/OperatingSystemVersion.h"

#include <utility>
#include <vector>

namespace cindertop::linux_platform {

LinuxMachine::LinuxMachine(const Roots& roots, std::optional<std::string> bundleIdentifier,
                           const MonotonicClock& monotonicClock)
    : bus_(monotonicClock),
      powerProfile_(bus_, roots),
      lid_(bus_, roots),
      zones_(roots, monotonicClock),
      heat_(roots, monotonicClock, zones_),
      devices_(std::make_shared<SensorDevices>()),
      sensors_(roots, monotonicClock, zones_, devices_),
      processInformation_([this] { return heat_.read().state; }, powerProfile_, std::move(bundleIdentifier)),
      throttling_(std::make_shared<LinuxThermalPressureNotifications>(roots, monotonicClock, heat_)),
      temperatureEvents_(sensors_),
      meters_(roots, monotonicClock, devices_),
      clocks_(roots, monotonicClock, *throttling_),
      heatSourceSurvey_(roots, processInformation_, *throttling_, sensors_),
      displays_(lid_, roots),
      powerSources_(roots, monotonicClock),
      hostStatistics_(roots),
      processes_(roots),
      applications_(roots, processes_),
      graphics_(roots, processes_, monotonicClock),
      systemValues_(roots) {}

Machine LinuxMachine::services() {
    return {.operatingSystem = operatingSystem,
            .clock = clock_,
            .process = processInformation_,
            .pressure = throttling_,
            .temperatureEvents = temperatureEvents_,
            .displays = displays_,
            .powerSources = powerSources_,
            .hostStatistics = hostStatistics_,
            .processes = processes_,
            .applications = applications_,
            .systemValues = systemValues_,
            .comparison = LocalizedComparison::ofUser(),
            .sources =
                [this] {
                    return std::vector{
                        heat_.status(),         throttling_->status(),    sensors_.status(),
                        powerSources_.status(), powerProfile_.status(),   displays_.status(),
                        lid_.status(),          hostStatistics_.status(), processes_.status(),
                        applications_.status(), graphics_.status(),       systemValues_.status()};
                },
            .heatSourceSurvey = &heatSourceSurvey_,
            .meters = &meters_,
            .clocks = &clocks_,
            .graphics = &graphics_};
}

} // namespace cindertop::linux_platform
