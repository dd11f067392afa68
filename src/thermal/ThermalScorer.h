#pragma once

#include "thermal/ThermalEngineConfiguration.h"
#include "thermal/ThermalReading.h"
#include "thermal/ThermalScore.h"

#include <optional>
#include <span>

namespace cindertop {

/// Decides how hot the machine is. A pure function: the memory of the previous score lives in the engine.
class ThermalScorer {
public:
    /// Never fails: what is missing gives no points. `previousScore` is the one that the trend is measured
    /// against; of the configuration only the thresholds count.
    ThermalScore score(const ThermalReading& reading, const std::optional<ThermalScore>& previousScore,
                       const ThermalEngineConfiguration& configuration) const;

private:
    static std::optional<double> representativeTemperature(std::span<const TemperatureReading> temperatures);
    static int temperatureScore(double celsius, const ThermalTemperatureThresholds& thresholds);
};

} // namespace cindertop
