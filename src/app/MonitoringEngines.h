#pragma once

#include "context/SystemContext.h"
#include "cpu/GlobalCPUUsageMonitor.h"
#include "cpu/ProcessOffenderEngine.h"
#include "platform/Machine.h"
#include "thermal/ThermalEngine.h"
#include "thermal/ThermalProviders.h"
#include "thermal/ThermalReading.h"

#include <vector>

namespace cindertop {

/// The engines over one machine's services. Each serialises its own calls, but the services answer one thread
/// at a time: ask all engines from one thread.
class MonitoringEngines {
public:
    MonitoringEngines(const Machine& machine, DarwinThermalPressureReader::Source pressureReader);

    /// All forget what they keep between ticks.
    void reset();

    /// Measures, and keeps what the sensors said.
    ThermalScore readScore(const ThermalEngineConfiguration& configuration);

    /// Tells the machine whether all sensors, meters and fans are being shown.
    void setHardwareObserved(bool isObserved);

    /// Every sensor that answered at the latest score, in the system's order; a score tells only the hottest.
    const std::vector<TemperatureReading>& temperatures() const { return temperatures_; }

private:
    class KeptTemperatures;

    TemperatureEvents& temperatureEvents_;
    HardwareMeters* meters_;
    std::vector<TemperatureReading> temperatures_;

public:
    ThermalEngine thermal;
    SystemContextEngine context;
    ProcessOffenderEngine offenders;
    GlobalCPUUsageMonitor cpuUsage;
};

} // namespace cindertop
