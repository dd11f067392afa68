#pragma once

#include "platform/simulated/Scenario.h"
#include "platform/simulated/ScenarioError.h"

#include <expected>
#include <string_view>

namespace cindertop::simulated {

/// Reads a scenario file. Strict: whatever the format does not name is an error.
std::expected<Scenario, ScenarioError> parseScenario(std::string_view text);

} // namespace cindertop::simulated
