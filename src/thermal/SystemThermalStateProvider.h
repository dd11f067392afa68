#pragma once

#include "platform/Clock.h"
#include "platform/ProcessInformation.h"
#include "thermal/DarwinThermalPressureProvider.h"
#include "thermal/ThermalReading.h"

namespace cindertop {

/// Reads what the system itself says about heat: its thermal state and pressure.
class SystemThermalStateProvider {
public:
    /// Both services must outlive the provider.
    SystemThermalStateProvider(const ProcessInformation& process, DarwinThermalPressureProvider pressure,
                               const Clock& clock);

    /// A reading without temperatures, data source `official`. What the system does not tell is
    /// `unavailable`.
    ThermalReading read() const;

private:
    const ProcessInformation& process_;
    DarwinThermalPressureProvider pressure_;
    const Clock& clock_;
};

} // namespace cindertop
