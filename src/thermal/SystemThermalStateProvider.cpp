#include "thermal/SystemThermalStateProvider.h"

#include <utility>

namespace cindertop {

SystemThermalStateProvider::SystemThermalStateProvider(const ProcessInformation& process,
                                                       DarwinThermalPressureProvider pressure,
                                                       const Clock& clock)
    : process_(process), pressure_(std::move(pressure)), clock_(clock) {}

ThermalReading SystemThermalStateProvider::read() const {
    const auto systemState = fromProcessState(process_.thermalState());
    const auto pressureLevel = pressure_.readPressureLevel();
    return {.systemState = systemState,
            .pressureLevel = pressureLevel,
            .temperatures = {},
            .dataSource = ThermalDataSource::official,
            .measuredAt = clock_.now()};
}

} // namespace cindertop
