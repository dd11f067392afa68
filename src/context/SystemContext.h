#pragma once

#include "context/DisplayContext.h"
#include "context/HardwareContext.h"
#include "context/PowerContext.h"
#include "context/SustainedThermalPressure.h"
#include "support/Instant.h"

#include <memory>
#include <mutex>
#include <optional>

namespace cindertop {

/// The circumstances in which the machine runs hot.
struct SystemContextSnapshot { // NOLINT(cppcoreguidelines-pro-type-member-init): no part can be left out
    DisplayContextSnapshot displays;
    PowerContextSnapshot power;
    SustainedThermalPressureSnapshot sustainedPressure;
    HardwareContextSnapshot hardware{}; ///< empty where the machine tells none of it
    Instant measuredAt;

    /// A context that has not been measured yet; its instant is the Unix epoch.
    static const SystemContextSnapshot& placeholder();

    bool operator==(const SystemContextSnapshot&) const = default;
};

/// Produces the context that accompanies each score. Runs one call at a time, from whatever thread it comes.
class SystemContextEngine {
public:
    /// Neither provider may be null; without `hardware` nothing is known about it.
    SystemContextEngine(std::unique_ptr<const DisplayContextProviding> displayProvider,
                        std::unique_ptr<const PowerContextProviding> powerProvider,
                        SustainedThermalPressureConfiguration pressureConfiguration,
                        std::optional<HardwareContextProvider> hardware = std::nullopt);

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
    std::optional<HardwareContextProvider> hardware_;
};

} // namespace cindertop
