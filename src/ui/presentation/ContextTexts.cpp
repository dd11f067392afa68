#include "ui/presentation/ContextTexts.h"

#include "support/Wording.h"
#include "ui/presentation/QtText.h"

#include <algorithm>
#include <array>
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

namespace {

/// By the raw value.
constexpr std::array powerSources{"AC Power", "Battery Power", "UPS Power", "Offline",
                                  "Power source unavailable"};
constexpr Wording powerSaving{"Low Power Mode", "Power Saver"};
constexpr std::array batteryTemperatureLevels{"OK", "Warm", "Hot"};
static_assert(batteryTemperatureLevels.size() == EnumerationTable<BatteryTemperatureLevel>::cases.size());
static_assert(powerSources.size() == EnumerationTable<PowerSourceKind>::cases.size());

} // namespace

QString powerText(const PowerContextSnapshot& power, OperatingSystem system) {
    QStringList parts{powerSources.at(static_cast<std::size_t>(power.source))};
    if (power.isFullyCharged.value_or(false)) {
        parts += "charged";
    } else if (power.isCharging.value_or(false)) {
        parts += "charging";
    }
    if (power.isLowPowerModeEnabled) {
        parts += qtText(powerSaving.in(system));
    }
    return parts.join(" - ");
}

QStringList batterySegments(const PowerContextSnapshot& power, const QString& temperatureText) {
    QStringList segments;
    if (power.batteryLevelPercent) {
        segments += QString::number(*power.batteryLevelPercent) + '%';
    }
    if (!temperatureText.isEmpty()) {
        segments += temperatureText;
    }
    if (power.batteryTemperatureLevel) {
        segments += batteryTemperatureLevels.at(static_cast<std::size_t>(*power.batteryTemperatureLevel));
    }
    return segments.isEmpty() ? QStringList("Battery data unavailable") : segments;
}

QString displaysText(const DisplayContextSnapshot& displays) {
    QStringList parts;
    if (displays.isAvailable && displays.builtInDisplayCount > 0) {
        parts += "Built-in display";
    }
    if (displays.isAvailable && displays.externalDisplayCount > 0) {
        parts += displays.externalDisplayCount == 1
                     ? QString("External display")
                     : QString::number(displays.externalDisplayCount) + " external displays";
    }
    return parts.isEmpty() ? QString("Display data unavailable") : parts.join(" + ");
}

} // namespace cindertop::ui
