#include "scenario/machine/SimulatedMachine.h"

namespace cindertop::simulated {

SimulatedMachine::SimulatedMachine(const std::shared_ptr<const Scenario>& scenario, const Clock& clock)
    : processInformation_(Timeline(scenario, clock)),
      pressure_(std::make_shared<SimulatedThermalPressureNotifications>(Timeline(scenario, clock))),
      temperatureEvents_(Timeline(scenario, clock)),
      displayList_(Timeline(scenario, clock)),
      powerSources_(Timeline(scenario, clock)),
      hostStatistics_(Timeline(scenario, clock)),
      processTable_(Timeline(scenario, clock)),
      applicationCatalog_(scenario),
      systemValues_(scenario) {
    if (scenario->operatingSystem == OperatingSystem::gnuLinux) {
        heatSourceSurvey_.emplace(Timeline(scenario, clock));
    }
}

} // namespace cindertop::simulated
