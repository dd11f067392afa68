#pragma once

#include "cli/Arguments.h"
#include "terminal/Output.h"
#include "terminal/ProgramEnd.h"

namespace cindertop::cli {

/// Plays the scenario in virtual time and writes what the program does, one JSON object a line.
ExitStatus replayScenario(const Arguments& arguments, const Output& output);

} // namespace cindertop::cli
