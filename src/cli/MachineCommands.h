#pragma once

#include "cli/AgentClient.h"
#include "cli/Arguments.h"
#include "terminal/Output.h"
#include "terminal/ProgramEnd.h"

#include <optional>

namespace cindertop::cli {

/// "status", "watch" and "offenders": as the agent tells it, or measured here without one.
ExitStatus showMachine(const Arguments& arguments, Output& output, std::optional<AgentClient>& agent);

/// "record": writes what this machine does into a scenario file.
ExitStatus recordMachine(const Arguments& arguments);

} // namespace cindertop::cli
