#include "context/PowerContextSnapshot.h"

#include <algorithm>

namespace cindertop {

PowerContextSnapshot::PowerContextSnapshot(bool isAvailable, PowerSourceKind source,
                                           std::optional<int> batteryLevelPercent,
                                           std::optional<bool> isCharging, std::optional<bool> isFullyCharged,
                                           bool isLowPowerModeEnabled,
                                           std::optional<double> batteryTemperatureCelsius,
                                           std::optional<BatteryTemperatureLevel> batteryTemperatureLevel)
    : isAvailable(isAvailable),
      source(source),
      batteryLevelPercent(
          batteryLevelPercent.transform([](int percent) { return std::clamp(percent, 0, 100); })),
      isCharging(isCharging),
      isFullyCharged(isFullyCharged),
      isLowPowerModeEnabled(isLowPowerModeEnabled),
      batteryTemperatureCelsius(batteryTemperatureCelsius),
      batteryTemperatureLevel(batteryTemperatureLevel) {}

const PowerContextSnapshot& PowerContextSnapshot::unavailable() {
    static const PowerContextSnapshot snapshot(false, PowerSourceKind::unknown, std::nullopt, std::nullopt,
                                               std::nullopt, false, std::nullopt, std::nullopt);
    return snapshot;
}

bool PowerContextSnapshot::isExternalPowerConnected() const {
    return source == PowerSourceKind::acPower || source == PowerSourceKind::upsPower;
}

} // namespace cindertop
