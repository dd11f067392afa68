#pragma once

#include "cli/MachineFacts.h"
#include "cli/OffenderOrder.h"
#include "report/MachineReport.h"

#include <string>
#include <string_view>
#include <vector>

namespace cindertop::cli {

/// Everything about the machine, the advice where there is one, and where the facts come from.
std::vector<Line> statusPage(const MachineReport& report, const PageStyle& style);

/// All applications with all their processes.
std::vector<Line> offendersPage(const MachineSnapshot& snapshot, const PageStyle& style);

/// What a screen has room for, and how its applications are ordered.
struct ScreenLayout {
    int rows = 24; ///< at least 1
    OffenderOrder order{};
};

/// A screen of exactly that many rows, the most important first. `time` stands in the corner.
std::vector<Line> watchPage(const MachineReport& report, const PageStyle& style, const ScreenLayout& layout,
                            std::string_view time);

/// One tick in one line, for files and pipes.
std::string watchLine(const MachineSnapshot& snapshot, const PageStyle& style, std::string_view time);

} // namespace cindertop::cli
