#include "platform/linux/LinuxMachine.h"

#include <utility>

namespace cindertop::linux_platform {

LinuxMachine::LinuxMachine(const Roots& roots, std::optional<std::string> bundleIdentifier,
                           const MonotonicClock& monotonicClock)
    : bus_(monotonicClock),
      powerProfile_(bus_, roots),
      lid_(bus_, roots),
      zones_(roots, monotonicClock),
      heat_(roots, monotonicClock, zones_),
      sensors_(roots, monotonicClock, zones_),
      processInformation_([this] { return heat_.read().state; }, powerProfile_, std::move(bundleIdentifier)),
      throttling_(std::make_shared<LinuxThermalPressureNotifications>(roots, monotonicClock, heat_)),
      thermalPressure_(throttling_),
      temperatureEvents_(sensors_),
      heatSourceSurvey_(roots, processInformation_, *throttling_, sensors_),
      displays_(lid_, roots),
      powerSources_(roots, monotonicClock),
      hostStatistics_(roots),
      processes_(roots),
      applications_(roots, processes_),
      systemValues_(roots) {}

std::vector<SourceStatus> LinuxMachine::sources() {
    return {heat_.status(),         throttling_->status(),  sensors_.status(),     powerSources_.status(),
            powerProfile_.status(), displays_.status(),     lid_.status(),         hostStatistics_.status(),
            processes_.status(),    applications_.status(), systemValues_.status()};
}

} // namespace cindertop::linux_platform
