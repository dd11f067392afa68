#pragma once

#include "cli/Arguments.h"
#include "cli/Output.h"
#include "cli/ProgramEnd.h"

namespace cindertop::cli {

/// Plays the scenario in virtual time and writes what the program does, one JSON object a line.
ExitStatus replayScenario(const Arguments& arguments, const Output& output);

} // namespace cindertop::cli
