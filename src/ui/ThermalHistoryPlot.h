#pragma once

#include "persistence/ThermalHistorySample.h"

#include <chrono>
#include <optional>
#include <span>
#include <vector>

namespace cindertop::ui {

/// A sample and where it stands in the chart.
struct ThermalHistoryPoint {
    double position; ///< 0 at the start of the chart to 1 now
    const ThermalHistorySample* sample;
};

/// Points that belong together: a line may join them.
using ThermalHistoryRun = std::vector<ThermalHistoryPoint>;

/// What a chart of so many minutes shows at `now`, oldest first. A longer silence than a few missed samples,
/// as when the machine slept, parts two runs. Samples outside the window are left out. The points look at
/// `samples`.
std::vector<ThermalHistoryRun> thermalHistoryRuns(std::span<const ThermalHistorySample> samples, Instant now,
                                                  std::chrono::minutes window);

/// The point of the runs that stands nearest to `position`; none when there is no point.
std::optional<ThermalHistoryPoint> nearestPoint(std::span<const ThermalHistoryRun> runs, double position);

/// Where a temperature stands in the chart's height, 0 to 1.
double temperatureHeight(double celsius);
inline constexpr double lowestCharted = 20;   ///< degrees Celsius, at height 0
inline constexpr double highestCharted = 110; ///< at height 1

} // namespace cindertop::ui
