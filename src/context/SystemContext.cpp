#include "context/SystemContext.h"

#include <utility>

namespace cindertop {

const SystemContextSnapshot& SystemContextSnapshot::placeholder() {
    static const SystemContextSnapshot snapshot{.displays = DisplayContextSnapshot::unavailable(),
                                                .power = PowerContextSnapshot::unavailable(),
                                                .sustainedPressure =
                                                    SustainedThermalPressureSnapshot::inactive(),
                                                .measuredAt = unixEpoch};
    return snapshot;
}

SystemContextEngine::SystemContextEngine(std::unique_ptr<const DisplayContextProviding> displayProvider,
                                         std::unique_ptr<const PowerContextProviding> powerProvider,
                                         SustainedThermalPressureConfiguration pressureConfiguration,
                                         std::optional<HardwareContextProvider> hardware)
    : displayProvider_(std::move(displayProvider)),
      powerProvider_(std::move(powerProvider)),
      pressureTracker_(pressureConfiguration),
      hardware_(std::move(hardware)) {}

SystemContextSnapshot SystemContextEngine::snapshot(const std::optional<ThermalScore>& thermalScore,
                                                    Instant now, AwakeTime awake) {
    const std::scoped_lock lock(calls_);
    return {.displays = displayProvider_->readDisplayContext(),
            .power = powerProvider_->readPowerContext(),
            .sustainedPressure = pressureTracker_.update(thermalScore, awake),
            .hardware = hardware_ ? hardware_->readHardwareContext() : HardwareContextSnapshot{},
            .measuredAt = now};
}

void SystemContextEngine::resetPressureHistory() {
    const std::scoped_lock lock(calls_);
    pressureTracker_.reset();
}

} // namespace cindertop
