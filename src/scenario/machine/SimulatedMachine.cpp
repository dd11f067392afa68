#include "scenario/machine/SimulatedMachine.h"

namespace cindertop::simulated {

SimulatedMachine::SimulatedMachine(const std::shared_ptr<const Scenario>& scenario, const Clock& clock)
    : operatingSystem_(scenario->operatingSystem),
      clock_(clock),
      processInformation_(Timeline(scenario, clock)),
      pressure_(std::make_shared<SimulatedThermalPressureNotifications>(Timeline(scenario, clock))),
      temperatureEvents_(Timeline(scenario, clock)),
      displayList_(Timeline(scenario, clock)),
      powerSources_(Timeline(scenario, clock)),
      hostStatistics_(Timeline(scenario, clock)),
      processTable_(Timeline(scenario, clock)),
      graphics_(Timeline(scenario, clock)),
      applicationCatalog_(scenario),
      systemValues_(scenario),
      meters_(Timeline(scenario, clock)),
      clocks_(Timeline(scenario, clock)),
      comparison_(scenario->locale) {
    if (scenario->operatingSystem == OperatingSystem::gnuLinux) {
        heatSourceSurvey_.emplace(Timeline(scenario, clock));
    }
}

Machine SimulatedMachine::services() {
    return {.operatingSystem = operatingSystem_,
            .clock = clock_,
            .process = processInformation_,
            .pressure = pressure_,
            .temperatureEvents = temperatureEvents_,
            .displays = displayList_,
            .powerSources = powerSources_,
            .hostStatistics = hostStatistics_,
            .processes = processTable_,
            .applications = applicationCatalog_,
            .systemValues = systemValues_,
            .comparison = comparison_,
            .sources = [] { return std::vector<SourceStatus>{}; },
            .heatSourceSurvey = heatSourceSurvey_ ? &*heatSourceSurvey_ : nullptr,
            .meters = &meters_,
            .clocks = &clocks_,
            .graphics = &graphics_};
}

} // namespace cindertop::simulated
