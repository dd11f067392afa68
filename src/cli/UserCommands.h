#pragma once

#include "cli/AgentClient.h"
#include "cli/Arguments.h"
#include "terminal/Output.h"
#include "terminal/ProgramEnd.h"

#include <optional>

namespace cindertop::cli {

/// "history" and "export": what is stored, whether an agent runs or not.
ExitStatus showStoredThings(const Arguments& arguments, Output& output, std::optional<AgentClient>& agent);

/// "settings", "pause", "resume" and "accept-terms": through the agent where one runs.
ExitStatus steer(const Arguments& arguments, Output& output, std::optional<AgentClient>& agent);

} // namespace cindertop::cli
