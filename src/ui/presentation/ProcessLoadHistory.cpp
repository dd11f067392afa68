#include "ui/presentation/ProcessLoadHistory.h"

#include <algorithm>
#include <array>

namespace cindertop::ui {

namespace {

/// A share measured over an instant may exceed the last one: it is drawn at the upper end.
constexpr std::array axisMaxima{5.0, 10.0, 25.0, 50.0, 100.0};

double axisMaximumOf(std::span<const ProcessOffenderHistoryPoint> history) {
    double highest = 0;
    for (const auto& point : history) {
        highest = std::max(highest, point.cpuPercent);
    }
    const auto* const enough = std::ranges::lower_bound(axisMaxima, highest);
    return enough == axisMaxima.end() ? axisMaxima.back() : *enough;
}

} // namespace

ProcessLoadHistory ProcessLoadHistory::of(std::span<const ProcessOffenderHistoryPoint> history) {
    ProcessLoadHistory load{.points = {}, .axisMaximum = axisMaximumOf(history)};
    for (const auto& point : history) {
        load.points.push_back({.id = point.id(),
                               .cpuPercent = point.cpuPercent,
                               .normalizedValue = std::clamp(point.cpuPercent / load.axisMaximum, 0.0, 1.0)});
    }
    return load;
}

Seconds ProcessLoadHistory::span() const {
    return points.size() < 2 ? Seconds::zero() : secondsBetween(points.front().id, points.back().id);
}

double ProcessLoadHistory::position(const NormalizedProcessLoadPoint& point) const {
    const auto length = span();
    return length > Seconds::zero()
               ? std::clamp(secondsBetween(points.front().id, point.id) / length, 0.0, 1.0)
               : 1;
}

} // namespace cindertop::ui
