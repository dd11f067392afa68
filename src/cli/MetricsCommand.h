#pragma once

#include "cli/AgentClient.h"
#include "cli/Arguments.h"
#include "terminal/Output.h"
#include "terminal/ProgramEnd.h"

#include <optional>

namespace cindertop::cli {

/// "metrics": as the agent tells them, or measured here without one; once, or into a file until it is ended.
ExitStatus showMetrics(const Arguments& arguments, Output& output, std::optional<AgentClient>& agent);

} // namespace cindertop::cli
