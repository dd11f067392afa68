#pragma once

#include "platform/simulated/Scenario.h"
#include "platform/simulated/ScenarioNode.h"

#include <vector>

namespace cindertop::simulated {

/// Reads the frames, each completed by the one before it. Throws a ScenarioError.
std::vector<ScenarioFrame> parseFrames(const ScenarioNode& frames, Instant start);

} // namespace cindertop::simulated
