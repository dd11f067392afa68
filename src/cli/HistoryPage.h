#pragma once

#include "cli/MachineFacts.h"
#include "persistence/ThermalHistory.h"
#include "support/Instant.h"
#include "support/LocalizedComparison.h"

#include <chrono>
#include <optional>
#include <vector>

namespace cindertop::cli {

/// What the page of the history needs beside the history itself.
struct HistoryPageContext {
    bool isHistoryEnabled;       ///< in the settings
    std::chrono::minutes window; ///< how far back the page looks, at most an hour
    const LocalizedComparison& comparison;
    std::optional<Instant> writtenAt{}; ///< of the file, where no agent has added what it holds
};

/// The samples of the window as a chart that ends at the snapshot's instant, then the day. Without samples
/// one sentence says what makes some.
std::vector<Line> historyPage(const ThermalMonitoringSnapshot& recorded, const HistoryPageContext& context,
                              const PageStyle& style);

} // namespace cindertop::cli
