#pragma once

#include "context/SystemContext.h"
#include "support/TemperatureText.h"
#include "support/Wording.h"
#include "terminal/StyledText.h"
#include "thermal/ThermalScore.h"

#include <string>
#include <string_view>

namespace cindertop::cli {

/// How every page says that a fact is missing; such a fact is never shown as 0.
inline constexpr std::string_view notAvailable = "not available";

/// What stands in place of a score and a level on a machine that tells nothing about its heat.
inline constexpr std::string_view noHeatReadings = "No heat readings";

Tone toneOf(ThermalLevel level);

/// "43 of 100  Fair, rising" in the level's colour, or that nothing is known.
Line scoreLine(const ThermalScore& score);

/// The score as a bar of that many columns, empty when it is not known.
Line scoreBar(const ThermalScore& score, int columns, Charset charset);

/// A share from 0 to 1 as a bar of that many columns. A share above 0 is never blank.
Line shareBar(double share, int columns, Tone tone, Charset charset);

/// "state nominal, pressure not available".
std::string thermalText(const ThermalScore& score);

/// "battery power, battery 57 %, charging, 31°C, Low Power Mode on".
std::string powerText(const PowerContextSnapshot& power, const TemperatureFormatter& temperatures,
                      Charset charset, OperatingSystem system);

/// "2 active: 1 built in, 1 external".
std::string displaysText(const DisplayContextSnapshot& displays);

/// "Serious or worse for 2 min 5 s"; empty while no stretch of pressure lasts.
std::string pressureText(const SustainedThermalPressureSnapshot& pressure);

} // namespace cindertop::cli
