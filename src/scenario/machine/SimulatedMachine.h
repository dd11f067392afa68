#pragma once

#include "platform/Machine.h"
#include "scenario/machine/SimulatedHardware.h"
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

    Machine services();

private:
    OperatingSystem operatingSystem_;
    const Clock& clock_;
    SimulatedProcessInformation processInformation_;
    std::shared_ptr<SimulatedThermalPressureNotifications> pressure_;
    SimulatedTemperatureEvents temperatureEvents_;
    SimulatedDisplayList displayList_;
    SimulatedPowerSources powerSources_;
    SimulatedHostStatistics hostStatistics_;
    SimulatedProcessTable processTable_;
    SimulatedGraphicsUsage graphics_;
    SimulatedApplicationCatalog applicationCatalog_;
    SimulatedSystemValues systemValues_;
    SimulatedHardwareMeters meters_;
    SimulatedProcessorClocks clocks_;
    LocalizedComparison comparison_;
    std::optional<SimulatedHeatSourceSurvey>
        heatSourceSurvey_; ///< none on a Mac: a table of machines decides
};

} // namespace cindertop::simulated
