#pragma once

namespace cindertop {

/// The sensor temperatures, in degrees Celsius, at which the score enters the fair, serious and critical
/// bands.
struct ThermalTemperatureThresholds {
    double fair;
    double serious;
    double critical;

    static constexpr ThermalTemperatureThresholds defaults() {
        return {.fair = 85, .serious = 108, .critical = 115};
    }

    bool operator==(const ThermalTemperatureThresholds&) const = default;
};

} // namespace cindertop
