#pragma once

#include "context/SystemContext.h"

#include <optional>
#include <string>

namespace cindertop {

/// "11.3 W", and whole watts from 20 on: "23 W". The point is "." in every locale.
std::string wattsText(double watts);

/// "Drawing 11.3 W", "Charging with 23 W", "Charging with 23 W, drawing 9.4 W". What the battery says goes
/// first: it is the drain that its owner feels. None where nothing tells.
std::optional<std::string> powerFlowText(const SystemContextSnapshot& context);

/// "Processor held to 1.2 of 3.4 GHz by heat", "Processor slowed down by heat"; none while it is not held
/// back.
std::optional<std::string> heldBackText(const SpeedLimits& limits);

/// "2450 rpm", or "stopped".
std::string fanSpeedText(const FanReading& fan);

} // namespace cindertop
