#include "app/MonitoringEngines.h"

#include "context/DisplayContext.h"
#include "context/PowerContext.h"
#include "cpu/GlobalCPUUsageMonitor.h"
#include "cpu/SystemProcessCPUProvider.h"
#include "thermal/ThermalProviders.h"

#include <memory>

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

MonitoringEngines::MonitoringEngines(const MachineServices& services)
    : temperatureEvents_(services.temperatureEvents),
      thermal(SystemThermalStateProvider(
                  services.process, DarwinThermalPressureProvider(services.pressureReader), services.clock),
              std::make_unique<KeptTemperatures>(services.temperatureEvents, temperatures_), ThermalScorer()),
      context(std::make_unique<SystemDisplayContextProvider>(services.displays),
              std::make_unique<SystemPowerContextProvider>(services.powerSources, services.process),
              SustainedThermalPressureConfiguration::defaults()),
      offenders(std::make_unique<SystemProcessCPUProvider>(services.processes, services.applications),
                services.comparison, services.operatingSystem),
      cpuUsage(std::make_unique<DarwinSystemCPUTimeProvider>(services.hostStatistics)) {}

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
