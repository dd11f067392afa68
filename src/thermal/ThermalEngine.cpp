#include "thermal/ThermalEngine.h"

#include <utility>

namespace cindertop {

ThermalEngine::ThermalEngine(SystemThermalStateProvider systemProvider,
                             std::unique_ptr<TemperatureSensorProviding> sensorProvider, ThermalScorer scorer)
    : systemProvider_(std::move(systemProvider)),
      sensorProvider_(std::move(sensorProvider)),
      scorer_(scorer) {}

ThermalScore ThermalEngine::snapshot(const ThermalEngineConfiguration& configuration) {
    std::unique_lock lock(calls_);
    auto reading = systemProvider_.read();
    if (configuration.usesExperimentalSensors) {
        lock.unlock(); // sensors are slow, and the trend may be reset meanwhile
        const auto temperatures = sensorProvider_->readTemperatures();
        lock.lock();
        reading = reading.merging(temperatures);
    }
    previousScore_ = scorer_.score(reading, previousScore_, configuration);
    return *previousScore_;
}

void ThermalEngine::resetTrend() {
    const std::scoped_lock lock(calls_);
    previousScore_.reset();
}

} // namespace cindertop
