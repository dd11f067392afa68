#pragma once

#include "platform/ApplicationCatalog.h"
#include "platform/Clock.h"
#include "platform/DisplayList.h"
#include "platform/GraphicsUsage.h"
#include "platform/HardwareMeters.h"
#include "platform/HeatSourceSurvey.h"
#include "platform/HostStatistics.h"
#include "platform/PowerSources.h"
#include "platform/ProcessInformation.h"
#include "platform/ProcessTable.h"
#include "platform/ProcessorClocks.h"
#include "platform/SourceStatus.h"
#include "platform/SystemValues.h"
#include "platform/TemperatureEvents.h"
#include "platform/ThermalPressureNotifications.h"
#include "support/LocalizedComparison.h"
#include "support/Wording.h"

#include <functional>
#include <memory>
#include <vector>

namespace cindertop {

/// All services of one machine, live or played. They must outlive whoever holds this.
struct Machine {
    OperatingSystem operatingSystem; ///< decides texts, the meaning of process names, and default preferences
    const Clock& clock;
    const ProcessInformation& process;
    std::shared_ptr<ThermalPressureNotifications> pressure;
    TemperatureEvents& temperatureEvents;
    const DisplayList& displays;
    const PowerSources& powerSources;
    const HostStatistics& hostStatistics;
    ProcessTable& processes;
    ApplicationCatalog& applications;
    const SystemValues& systemValues;
    const LocalizedComparison& comparison;              ///< of the user's language
    std::function<std::vector<SourceStatus>()> sources; ///< what the latest reads found about each source
    HeatSourceSurvey* heatSourceSurvey = nullptr; ///< none where a table of machines alone decides the check
    HardwareMeters* meters = nullptr;             ///< none where the system has no such readings
    ProcessorClocks* clocks = nullptr;            ///< likewise
    GraphicsUsage* graphics = nullptr;            ///< none where nothing tells it
};

} // namespace cindertop
