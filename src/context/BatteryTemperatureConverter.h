#pragma once

#include <cstdint>
#include <optional>

namespace cindertop {

/// Turns what a battery reports into degrees.
class BatteryTemperatureConverter {
public:
    BatteryTemperatureConverter() = delete;

    /// From tenths of a kelvin: 3031 is 29.95. None outside -20 to 80 degrees, which no working battery has.
    static constexpr std::optional<double> celsiusFromDeciKelvin(std::int64_t raw) {
        const auto celsius = static_cast<double>(raw) / 10 - 273.15;
        if (celsius < -20 || celsius > 80) {
            return std::nullopt;
        }
        return celsius;
    }
};

} // namespace cindertop
