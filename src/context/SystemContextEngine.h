#pragma once

#include "context/DisplayContextProviding.h"
#include "context/PowerContextProviding.h"
#include "context/SustainedThermalPressureTracker.h"
#include "context/SystemContextSnapshot.h"

#include <memory>
#include <mutex>

namespace cindertop {

/// Produces the context that accompanies each score. Runs one call at a time, from whatever thread it comes.
class SystemContextEngine {
public:
    /// Neither provider may be null.
    SystemContextEngine(std::unique_ptr<const DisplayContextProviding> displayProvider,
                        std::unique_ptr<const PowerContextProviding> powerProvider,
                        SustainedThermalPressureConfiguration pressureConfiguration);

    /// `now` and `awake` are the caller's, the same as for the rest of the tick: the engine reads no clock.
    SystemContextSnapshot snapshot(const std::optional<ThermalScore>& thermalScore, Instant now,
                                   AwakeTime awake);

    /// Forgets the current stretch of pressure, so that a new start never continues an old one.
    void resetPressureHistory();

private:
    std::mutex calls_;
    std::unique_ptr<const DisplayContextProviding> displayProvider_;
    std::unique_ptr<const PowerContextProviding> powerProvider_;
    SustainedThermalPressureTracker pressureTracker_;
};

} // namespace cindertop
