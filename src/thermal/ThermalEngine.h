#pragma once

#include "thermal/ThermalProviders.h"
#include "thermal/ThermalScorer.h"

#include <memory>
#include <mutex>

namespace cindertop {

/// Answers how hot the machine is, measured against its own last answer. Runs one call at a time, from
/// whatever thread it comes; only while the sensors are read may another one enter.
class ThermalEngine {
public:
    /// `sensorProvider` may not be null.
    ThermalEngine(SystemThermalStateProvider systemProvider,
                  std::unique_ptr<TemperatureSensorProviding> sensorProvider, ThermalScorer scorer);

    /// `measuredAt` is the moment at which the system was asked, however long the sensors take.
    ThermalScore snapshot(const ThermalEngineConfiguration& configuration);

    /// Forgets the last score: the next one has the trend `stable`, that of a running snapshot included.
    void resetTrend();

private:
    std::mutex calls_;
    SystemThermalStateProvider systemProvider_;
    std::unique_ptr<TemperatureSensorProviding> sensorProvider_;
    ThermalScorer scorer_;
    std::optional<ThermalScore> previousScore_;
};

} // namespace cindertop
