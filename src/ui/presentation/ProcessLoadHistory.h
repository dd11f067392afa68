#pragma once

#include "cpu/ProcessOffender.h"

#include <QObject>
#include <span>
#include <vector>

namespace cindertop::ui {

/// An offender's share at one census, as the chart draws it.
struct NormalizedProcessLoadPoint {
    Instant id; ///< when it was measured
    double cpuPercent{};
    double normalizedValue{}; ///< 0 to 1 against the chart's upper end

    bool operator==(const NormalizedProcessLoadPoint&) const = default;
};

/// An offender's history on its way through QML.
struct ProcessLoadHistory {
    Q_GADGET
    Q_PROPERTY(double axisMaximum MEMBER axisMaximum)

public:
    std::vector<NormalizedProcessLoadPoint> points; ///< oldest first
    double axisMaximum{};                           ///< percent: a round number, at most 100

    static ProcessLoadHistory of(std::span<const ProcessOffenderHistoryPoint> history);

    /// Of the oldest point to the newest; 0 without two.
    Seconds span() const;
    /// Where a point stands in the chart's width, 0 to 1.
    double position(const NormalizedProcessLoadPoint& point) const;

    bool operator==(const ProcessLoadHistory&) const = default;
};

} // namespace cindertop::ui
