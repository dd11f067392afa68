#include "ui/ContextTexts.h"

#include "support/Wording.h"
#include "ui/QtText.h"

#include <array>

namespace cindertop::ui {

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
