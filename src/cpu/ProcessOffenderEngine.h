#pragma once

#include "cpu/GraphicsMeter.h"
#include "cpu/ProcessCPUReading.h"
#include "cpu/ProcessOffender.h"
#include "cpu/ProcessOffenderAggregator.h"
#include "cpu/ProcessOffenderConfiguration.h"
#include "platform/GraphicsUsage.h"
#include "support/Instant.h"
#include "support/LocalizedComparison.h"
#include "support/Wording.h"

#include <memory>
#include <mutex>

namespace cindertop {

/// Finds who uses the CPU by comparing each census with the previous one. Runs one call at a time, from
/// whatever thread it comes.
class ProcessOffenderEngine {
public:
    /// `provider` may not be null; `comparison` decides the order of equal shares and must outlive the
    /// engine; `system` decides what names of processes mean. `graphics` is asked after each census and must
    /// outlive the engine; null where nothing tells who draws.
    ProcessOffenderEngine(std::unique_ptr<ProcessCPUReadingProviding> provider,
                          const LocalizedComparison& comparison, OperatingSystem system,
                          GraphicsUsage* graphics = nullptr);

    /// Takes a census. The first one is `collecting`, since a share needs two; one that finds no process is
    /// `unavailable`, and the next starts over. Shares are of the awake time between two of them.
    ProcessOffenderSnapshot snapshot(const ProcessOffenderConfiguration& configuration, Instant at,
                                     AwakeTime awake);

    /// Forgets the last census and all histories.
    void reset();

private:
    std::mutex calls_;
    std::unique_ptr<ProcessCPUReadingProviding> provider_;
    const LocalizedComparison* comparison_;
    OperatingSystem system_;
    GraphicsUsage* graphics_;
    GraphicsMeter graphicsMeter_;
    PreviousReadingsByPID previousReadingsByPID_;
    Instant previousAt_;
    AwakeTime previousAwake_;
    HistoryByOffenderID historyByOffenderID_;
};

} // namespace cindertop
