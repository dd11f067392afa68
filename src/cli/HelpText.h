#pragma once

#include "cli/CommandLine.h"

#include <string>
#include <vector>

namespace cindertop::cli {

/// What a list names it: "export FILE", "-h, --help", "--until SECONDS".
std::string termOf(const CommandRow& command);
std::string termOf(const OptionRow& option);

/// The ways to call the program, one line each.
std::vector<std::string> usageOf(const ProgramTable& program);

/// What "--help" prints, for a terminal of 80 columns.
std::string helpText(const ProgramTable& program);

} // namespace cindertop::cli
