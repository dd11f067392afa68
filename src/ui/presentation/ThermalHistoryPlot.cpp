#include "ui/presentation/ThermalHistoryPlot.h"

#include <algorithm>
#include <cmath>

namespace cindertop::ui {

namespace {

constexpr std::chrono::seconds longestSilence{30}; ///< a sample comes every 5 s

} // namespace

std::vector<ThermalHistoryRun> thermalHistoryRuns(std::span<const ThermalHistorySample> samples, Instant now,
                                                  std::chrono::minutes window) {
    const auto start = now - window;
    std::vector<ThermalHistoryRun> runs;
    for (const auto& sample : samples) {
        if (sample.measuredAt < start || sample.measuredAt > now) {
            continue;
        }
        if (runs.empty() || sample.measuredAt - runs.back().back().sample->measuredAt > longestSilence) {
            runs.emplace_back();
        }
        runs.back().push_back(
            {.position = secondsBetween(start, sample.measuredAt) / Seconds(window), .sample = &sample});
    }
    return runs;
}

std::optional<ThermalHistoryPoint> nearestPoint(std::span<const ThermalHistoryRun> runs, double position) {
    std::optional<ThermalHistoryPoint> nearest;
    for (const auto& run : runs) {
        for (const auto& point : run) {
            if (!nearest || std::abs(point.position - position) < std::abs(nearest->position - position)) {
                nearest = point;
            }
        }
    }
    return nearest;
}

double temperatureHeight(double celsius) {
    return std::clamp((celsius - lowestCharted) / (highestCharted - lowestCharted), 0.0, 1.0);
}

} // namespace cindertop::ui
