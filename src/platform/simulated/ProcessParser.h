#pragma once

#include "platform/simulated/Scenario.h"
#include "platform/simulated/ScenarioNode.h"

#include <memory>

namespace cindertop::simulated {

/// Reads a list of processes; null for null. Throws a ScenarioError.
std::shared_ptr<const ScenarioProcessList> parseProcesses(const ScenarioNode& node, Instant start);

} // namespace cindertop::simulated
