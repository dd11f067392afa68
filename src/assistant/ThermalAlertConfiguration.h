#pragma once

#include "support/Instant.h"
#include "thermal/ThermalLevel.h"

namespace cindertop {

/// Which alerts are wanted, and how often.
struct ThermalAlertConfiguration {
    bool isEnabled;            ///< false: no alert, though transitions are still followed
    ThermalLevel minimumLevel; ///< `critical` asks for critical episodes only; every lower level for all
    Seconds eventCooldown;     ///< between two alerts of one kind, at least 1
    Seconds globalCooldown;    ///< between an alert of any kind and one that is not critical, at least 0
    Seconds
        minimumRecoveryPressureDuration; ///< of sustained pressure whose end is worth an alert, at least 1

    /// A duration below its bound, or one that is no number, becomes the bound.
    constexpr ThermalAlertConfiguration(bool isEnabled, ThermalLevel minimumLevel, Seconds eventCooldown,
                                        Seconds globalCooldown, Seconds minimumRecoveryPressureDuration)
        : isEnabled(isEnabled),
          minimumLevel(minimumLevel),
          eventCooldown(atLeast(Seconds{1}, eventCooldown)),
          globalCooldown(atLeast(Seconds{0}, globalCooldown)),
          minimumRecoveryPressureDuration(atLeast(Seconds{1}, minimumRecoveryPressureDuration)) {}

    bool operator==(const ThermalAlertConfiguration&) const = default;

private:
    static constexpr Seconds atLeast(Seconds bound, Seconds duration) {
        return duration > bound ? duration : bound;
    }
};

} // namespace cindertop
