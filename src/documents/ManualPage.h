#pragma once

#include "cli/CommandLine.h"

#include <string>
#include <string_view>

namespace cindertop::documents {

/// The program's manual page, for groff's man macros. `seeAlso` names another page of the same section.
std::string manualPage(const cli::ProgramTable& program, std::string_view seeAlso);

} // namespace cindertop::documents
