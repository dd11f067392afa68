#include "ui/DurationText.h"

#include <algorithm>
#include <cmath>

namespace cindertop::ui {

namespace {

constexpr double longest = 1e15; ///< seconds; still whole numbers

} // namespace

QString formattedDuration(double seconds) {
    const auto whole =
        std::isnan(seconds) ? 0 : static_cast<qint64>(std::round(std::clamp(seconds, 0.0, longest)));
    if (whole < 60) {
        return QString::number(whole) + 's';
    }
    const auto hours = whole / 3600;
    const auto minutes = whole / 60 % 60;
    if (hours == 0) {
        return QString::number(minutes) + 'm';
    }
    const auto text = QString::number(hours) + 'h';
    return minutes == 0 ? text : text + ' ' + QString::number(minutes) + 'm';
}

} // namespace cindertop::ui
