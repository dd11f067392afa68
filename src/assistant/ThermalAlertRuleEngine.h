#pragma once

#include "assistant/CinderInsight.h"
#include "assistant/ThermalAlert.h"
#include "context/SystemContext.h"
#include "support/Instant.h"
#include "support/Wording.h"
#include "thermal/ThermalLevel.h"
#include "thermal/ThermalScore.h"

#include <map>
#include <optional>
#include <string>

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

/// What one evaluation of the alert rules looks at.
struct ThermalAlertInput {
    ThermalScore score;                  ///< only its level counts
    SystemContextSnapshot systemContext; ///< only the sustained pressure counts
    CinderRecommendationSnapshot recommendationSnapshot;
    std::optional<std::string> topOffenderLabel; ///< name of the busiest offender; absent when there is none
    Instant now;

    bool operator==(const ThermalAlertInput&) const = default;
};

/// Decides, once a tick, whether to alert the user that pressure became sustained or critical, or eased. A
/// transition that a setting or a cooldown suppresses is not reported later. A plain value for one thread.
class ThermalAlertRuleEngine {
public:
    /// `system` decides the wording.
    explicit ThermalAlertRuleEngine(OperatingSystem system) : system_(system) {}

    std::optional<ThermalAlert> evaluate(const ThermalAlertInput& input,
                                         const ThermalAlertConfiguration& configuration);

    /// The machine has slept since the last evaluation. Heat at waking is the heat from before the sleep and
    /// not reported again; if it is gone, its end went unseen and is not reported.
    void noteSleep() { isAfterSleep_ = true; }

private:
    std::optional<ThermalAlertKind> followTransition(const ThermalAlertInput& input,
                                                     Seconds minimumRecoveryPressureDuration);
    void forgetHeat();
    void moveDeliveriesBeforeNow(Instant now);
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
    bool isAfterSleep_{false}; ///< until it is known whether the earlier heat continues
};

} // namespace cindertop
