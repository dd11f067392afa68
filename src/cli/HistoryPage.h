#pragma once

#include "cli/MachineFacts.h"
#include "persistence/ThermalMonitoringSnapshot.h"
#include "support/LocalizedComparison.h"

#include <vector>

namespace cindertop::cli {

/// What the page of the history needs beside the history itself.
struct HistoryPageContext {
    bool isHistoryEnabled; ///< in the settings
    const LocalizedComparison& comparison;
};

/// The samples of the last hour as a chart that ends at the snapshot's instant, then the day. Without samples
/// one sentence says what makes some.
std::vector<Line> historyPage(const ThermalMonitoringSnapshot& snapshot, const HistoryPageContext& context,
                              const PageStyle& style);

} // namespace cindertop::cli
