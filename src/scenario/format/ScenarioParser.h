#pragma once

#include "scenario/format/JsonTree.h"
#include "scenario/format/Scenario.h"
#include "scenario/format/ScenarioNode.h"

#include <expected>
#include <memory>
#include <string_view>
#include <vector>

namespace cindertop::simulated {

/// Reads a list of processes; null for null. Throws a ScenarioError.
std::shared_ptr<const ScenarioProcessList> parseProcesses(const ScenarioNode& node, Instant start);

/// Read what a frame says about meters and clocks. Throw a ScenarioError.
MeterReadings parseMeters(const ScenarioNode& node);
ProcessorClockReading parseClocks(const ScenarioNode& node);

/// Reads the frames, each completed by the one before it. Throws a ScenarioError.
std::vector<ScenarioFrame> parseFrames(const ScenarioNode& frames, Instant start);

/// Reads the commands in their order. Throws a ScenarioError.
std::vector<ScenarioCommand> parseCommands(const ScenarioNode& commands, Instant start);

/// Reads a scenario file. Strict: whatever the format does not name is an error.
std::expected<Scenario, ScenarioError> parseScenario(std::string_view text);

} // namespace cindertop::simulated
