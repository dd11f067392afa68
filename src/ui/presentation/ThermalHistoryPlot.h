#pragma once

#include "persistence/ThermalHistory.h"

#include <QObject>
#include <QString>
#include <chrono>
#include <optional>
#include <span>
#include <vector>

namespace cindertop::ui {

/// The samples of a history on their way through QML, oldest first.
struct ThermalHistorySamples {
    Q_GADGET

public:
    SharedHistorySamples values;

    bool operator==(const ThermalHistorySamples&) const = default;
};

/// What one sample of the history says, in words. An empty text is not known.
struct ThermalHistoryReadout {
    Q_GADGET
    Q_PROPERTY(bool isPresent MEMBER isPresent)
    Q_PROPERTY(double position MEMBER position)
    Q_PROPERTY(double height MEMBER height)
    Q_PROPERTY(int level MEMBER level)
    Q_PROPERTY(QString time MEMBER time)
    Q_PROPERTY(QString score MEMBER score)
    Q_PROPERTY(QString levelLabel MEMBER levelLabel)
    Q_PROPERTY(QString cpu MEMBER cpu)
    Q_PROPERTY(QString temperature MEMBER temperature)

public:
    bool isPresent{};
    double position{}; ///< 0 an hour ago to 1 now
    double height{};   ///< of the score, 0 to 1
    int level{};
    QString time;
    QString score;
    QString levelLabel;
    QString cpu;
    QString temperature;

    bool operator==(const ThermalHistoryReadout&) const = default;
};

/// A sample and where it stands in the chart.
struct ThermalHistoryPoint {
    double position; ///< 0 at the start of the chart to 1 now
    const ThermalHistorySample* sample;
};

/// Points that belong together: a line may join them.
using ThermalHistoryRun = std::vector<ThermalHistoryPoint>;

/// What a chart of that many minutes shows at `now`, oldest first. A longer silence than a few missed
/// samples, as when the machine slept, parts two runs. Samples outside the window are left out. The points
/// look at `samples`.
std::vector<ThermalHistoryRun> thermalHistoryRuns(std::span<const ThermalHistorySample> samples, Instant now,
                                                  std::chrono::minutes window);

/// The point of the runs that stands nearest to `position`; none when there is no point.
std::optional<ThermalHistoryPoint> nearestPoint(std::span<const ThermalHistoryRun> runs, double position);

/// Where a temperature stands in the chart's height, 0 to 1.
double temperatureHeight(double celsius);
inline constexpr double lowestCharted = 20;   ///< degrees Celsius, at height 0
inline constexpr double highestCharted = 110; ///< at height 1

} // namespace cindertop::ui
