#pragma once

#include "persistence/ThermalHistory.h"
#include "support/Instant.h"
#include "terminal/StyledText.h"

#include <chrono>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace cindertop::cli {

/// What one column of a chart stands for; absent where nothing was recorded or measured.
struct ChartColumn {
    std::optional<ThermalLevel> level;        ///< the highest in its stretch of time
    std::optional<double> temperatureCelsius; ///< the highest
    std::optional<double> cpuPercent;         ///< the average

    bool operator==(const ChartColumn&) const = default;
};

/// A stretch of time, cut into the columns of a chart.
struct ChartTime {
    Instant end;
    std::chrono::seconds duration;
    int columns; ///< at least 1

    Instant start() const { return end - duration; }

    /// The column of a moment; the last one for the end and what comes after it, none before the start.
    std::optional<int> columnOf(Instant instant) const;
};

std::vector<ChartColumn> chartColumns(std::span<const ThermalHistorySample> samples, const ChartTime& time);

/// A row a level, the highest on top, each column filled up to its level: readable without colour.
std::vector<Line> levelRows(const std::vector<ChartColumn>& columns, Charset charset);

/// The values that the lowest and the highest block of a sparkline stand for.
struct SparklineRange {
    double low;
    double high;
};

/// One row of blocks, blank where there is no value.
Line sparkline(std::string_view label, const std::vector<std::optional<double>>& values,
               const SparklineRange& range, Charset charset);

/// A line with marks at round times of the user's clock, and below it the times.
std::vector<Line> timeAxis(const ChartTime& time, Charset charset);

} // namespace cindertop::cli
