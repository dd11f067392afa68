#pragma once

#include "cli/CommandLine.h"

#include <string>

namespace cindertop::documents {

/// A shell's completions of a program: commands, options, and what their values may be.
std::string bashCompletions(const cli::ProgramTable& program);
std::string zshCompletions(const cli::ProgramTable& program);
std::string fishCompletions(const cli::ProgramTable& program);

} // namespace cindertop::documents
