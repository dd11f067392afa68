#pragma once

#include "assistant/ThermalAlert.h"
#include "assistant/ThermalAlertConfiguration.h"
#include "assistant/ThermalAlertInput.h"
#include "support/Instant.h"
#include "support/OperatingSystem.h"

#include <map>
#include <optional>

namespace cindertop {

/// Decides, once a tick, whether to tell the user that pressure became sustained or critical, or eased. A
/// transition that a setting or a cooldown suppresses is over: it is not told later. A plain value for one
/// thread.
class ThermalAlertRuleEngine {
public:
    /// `system` decides the wording.
    explicit ThermalAlertRuleEngine(OperatingSystem system) : system_(system) {}

    std::optional<ThermalAlert> evaluate(const ThermalAlertInput& input,
                                         const ThermalAlertConfiguration& configuration);

    /// The machine has slept since the last evaluation. Heat that it wakes up with is the one that it went to
    /// sleep with, and not told again; heat that is gone went unseen, and its end is not told.
    void noteSleep() { isAfterSleep_ = true; }

private:
    std::optional<ThermalAlertKind> followTransition(const ThermalAlertInput& input,
                                                     Seconds minimumRecoveryPressureDuration);
    void forgetHeat();
    void bringDeliveriesIntoThePast(Instant now);
    bool passesLevelFilter(ThermalAlertKind kind, ThermalLevel minimumLevel) const;
    bool canDeliver(ThermalAlertKind kind, const ThermalAlertConfiguration& configuration, Instant now) const;
    void recordDelivery(ThermalAlertKind kind, Instant now);

    OperatingSystem system_;
    bool wasSustainedPressure_{false};
    bool wasCritical_{false};
    Seconds mostRecentSustainedDuration_{0}; ///< the longest stretch of sustained pressure so far; only grows
    std::optional<Instant> lastDeliveredAt_;
    std::map<ThermalAlertKind, Instant> lastDeliveredAtByKind_;
    bool deliveredCriticalSinceLastRecovery_{false};
    bool isAfterSleep_{false}; ///< until it is known what became of the heat of before
};

} // namespace cindertop
