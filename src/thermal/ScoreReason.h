#pragma once

#include "support/TemperatureText.h"
#include "thermal/ThermalScorer.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cindertop {

/// Why a score is what it is, in one line: "Pressure heavy: 75. Rising: +3". None where nothing reports the
/// heat.
std::optional<std::string> scoreReason(const ThermalScore& score, const TemperatureFormatter& temperatures);

/// A temperature with what happens where: "93°C · slows from 85°C · switches off at 105°C".
std::string temperatureWithLimits(const TemperatureReading& reading, const TemperatureFormatter& temperatures,
                                  std::string_view separator = " · ");

/// The sensor that the score counts: the hottest that tells the heat of processor or graphics; null without
/// one.
const TemperatureReading* hottestSensor(const ThermalScore& score,
                                        const std::vector<TemperatureReading>& readings);

} // namespace cindertop
