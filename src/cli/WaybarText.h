#pragma once

#include "cli/MachineFacts.h"
#include "report/MachineReport.h"

#include <string>

namespace cindertop::cli {

/// What the status bar Waybar takes from a custom module: one JSON object in one line. Its texts are markup,
/// so names are escaped.
std::string waybarText(const MachineReport& report, const PageStyle& style);

} // namespace cindertop::cli
