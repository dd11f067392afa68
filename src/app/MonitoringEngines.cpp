#include "app/MonitoringEngines.h"

#include "context/DisplayContext.h"
#include "context/PowerContext.h"
#include "cpu/GlobalCPUUsageMonitor.h"
#include "cpu/SystemProcessCPUProvider.h"
#include "thermal/ThermalProviders.h"

#include <memory>
#include <utility>

namespace cindertop {

/// Hands temperatures on and keeps them.
class MonitoringEngines::KeptTemperatures final : public TemperatureSensorProviding {
public:
    KeptTemperatures(TemperatureEvents& events, std::vector<TemperatureReading>& kept)
        : sensors_(events), kept_(kept) {}

    std::vector<TemperatureReading> readTemperatures() override {
        kept_ = sensors_.readTemperatures();
        return kept_;
    }

private:
    ExperimentalSensorTemperatureProvider sensors_;
    std::vector<TemperatureReading>& kept_;
};

MonitoringEngines::MonitoringEngines(const Machine& machine,
                                     DarwinThermalPressureReader::Source pressureReader)
    : temperatureEvents_(machine.temperatureEvents),
      meters_(machine.meters),
      thermal(SystemThermalStateProvider(
                  machine.process, DarwinThermalPressureProvider(std::move(pressureReader)), machine.clock),
              std::make_unique<KeptTemperatures>(machine.temperatureEvents, temperatures_), ThermalScorer()),
      context(std::make_unique<SystemDisplayContextProvider>(machine.displays),
              std::make_unique<SystemPowerContextProvider>(machine.powerSources, machine.process),
              SustainedThermalPressureConfiguration::defaults(),
              HardwareContextProvider(machine.meters, machine.clocks, machine.process)),
      offenders(std::make_unique<SystemProcessCPUProvider>(machine.processes, machine.applications),
                machine.comparison, machine.operatingSystem, machine.graphics),
      cpuUsage(std::make_unique<DarwinSystemCPUTimeProvider>(machine.hostStatistics)) {}

void MonitoringEngines::setHardwareObserved(bool isObserved) {
    temperatureEvents_.setObserved(isObserved);
    if (meters_ != nullptr) {
        meters_->setObserved(isObserved);
    }
}

ThermalScore MonitoringEngines::readScore(const ThermalEngineConfiguration& configuration) {
    temperatures_.clear();
    return thermal.snapshot(configuration);
}

void MonitoringEngines::reset() {
    thermal.resetTrend();
    context.resetPressureHistory();
    offenders.reset();
    cpuUsage.reset();
}

} // namespace cindertop
