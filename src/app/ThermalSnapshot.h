#pragma once

#include "support/TemperatureText.h"
#include "thermal/ThermalScore.h"

#include <cstdint>
#include <optional>
#include <string>

namespace cindertop {

/// The visual band of a snapshot: the one of the same name, and the same number, as its level.
enum class ThermalBand : std::uint8_t { normal, fair, serious, critical };

/// A score in the form in which the program shows it.
struct ThermalSnapshot {
    ThermalBand band{};
    ThermalLevel level{};
    std::int64_t score{}; ///< 0 to 100
    double effectIntensity{};
    bool shouldTriggerEffects{};
    double recommendedSamplingHz{};
    std::optional<double> temperatureCelsius;
    std::string temperatureText; ///< "47°C", or "--" without a temperature
    ThermalDataSource dataSource{};
    SystemThermalState systemState{};
    ThermalPressureLevel pressureLevel{};
    ThermalTrend trend{};

    /// What is shown while nothing is measured.
    static const ThermalSnapshot& idle();
    static ThermalSnapshot of(const ThermalScore& score, const TemperatureFormatter& temperatures);

    bool operator==(const ThermalSnapshot&) const = default;
};

} // namespace cindertop
