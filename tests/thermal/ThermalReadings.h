#pragma once

#include "thermal/ThermalReading.h"

#include <string>
#include <utility>
#include <vector>

namespace cindertop {

inline TemperatureReading sensor(ThermalSensorKind kind, double celsius, const std::string& name = "sensor") {
    return {.id = name, .label = name, .celsius = celsius, .kind = kind};
}

inline ThermalReading officialReading(SystemThermalState state, ThermalPressureLevel pressure,
                                      std::vector<TemperatureReading> temperatures = {}) {
    return {.systemState = state,
            .pressureLevel = pressure,
            .temperatures = std::move(temperatures),
            .dataSource = ThermalDataSource::official,
            .measuredAt = Instant(std::chrono::seconds(1'700'000'000))};
}

} // namespace cindertop
