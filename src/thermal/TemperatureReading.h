#pragma once

#include "support/Instant.h"
#include "thermal/ThermalSensorKind.h"

#include <string>

namespace cindertop {

/// One sensor temperature.
struct TemperatureReading {
    std::string id;    ///< the sensor's name; two sensors may share one
    std::string label; ///< the name shown to people
    double celsius;
    ThermalSensorKind kind;
    Seconds age{0}; ///< above 0 for a sensor that must not be read often

    /// From -40 to 130 degrees: what lies outside, or is no number, is a broken sensor.
    constexpr bool isPlausible() const { return celsius >= -40 && celsius <= 130; }

    bool operator==(const TemperatureReading&) const = default;
};

} // namespace cindertop
