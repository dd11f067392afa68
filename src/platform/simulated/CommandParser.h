#pragma once

#include "platform/simulated/Scenario.h"
#include "platform/simulated/ScenarioNode.h"

#include <vector>

namespace cindertop::simulated {

/// Reads the commands in their order. Throws a ScenarioError.
std::vector<ScenarioCommand> parseCommands(const ScenarioNode& commands, Instant start);

} // namespace cindertop::simulated
