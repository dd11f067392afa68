#pragma once

#include "scenario/machine/SimulatedHeat.h"
#include "scenario/machine/SimulatedProcesses.h"
#include "scenario/machine/SimulatedSurroundings.h"
#include "scenario/machine/Timeline.h"

#include <memory>
#include <optional>

namespace cindertop::simulated {

/// A scenario as a machine: every service answers for the frame in force by the clock, which may pass
/// several frames in one step. The clock must outlive the machine and its pressure notifications. No service
/// changes anything, so any thread may ask.
class SimulatedMachine {
public:
    SimulatedMachine(const std::shared_ptr<const Scenario>& scenario, const Clock& clock);

    SimulatedMachine(const SimulatedMachine&) = delete;
    SimulatedMachine& operator=(const SimulatedMachine&) = delete;

    ProcessInformation& processInformation() { return processInformation_; }

    std::shared_ptr<ThermalPressureNotifications> thermalPressureNotifications() { return pressure_; }

    TemperatureEvents& temperatureEvents() { return temperatureEvents_; }

    DisplayList& displayList() { return displayList_; }

    PowerSources& powerSources() { return powerSources_; }

    HostStatistics& hostStatistics() { return hostStatistics_; }

    ProcessTable& processTable() { return processTable_; }

    ApplicationCatalog& applicationCatalog() { return applicationCatalog_; }

    SystemValues& systemValues() { return systemValues_; }

    /// None on a Mac: there a table of machines decides.
    HeatSourceSurvey* heatSourceSurvey() { return heatSourceSurvey_ ? &*heatSourceSurvey_ : nullptr; }

private:
    SimulatedProcessInformation processInformation_;
    std::shared_ptr<SimulatedThermalPressureNotifications> pressure_;
    SimulatedTemperatureEvents temperatureEvents_;
    SimulatedDisplayList displayList_;
    SimulatedPowerSources powerSources_;
    SimulatedHostStatistics hostStatistics_;
    SimulatedProcessTable processTable_;
    SimulatedApplicationCatalog applicationCatalog_;
    SimulatedSystemValues systemValues_;
    std::optional<SimulatedHeatSourceSurvey> heatSourceSurvey_;
};

} // namespace cindertop::simulated
