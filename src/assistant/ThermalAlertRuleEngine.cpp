#include "assistant/ThermalAlertRuleEngine.h"

#include "assistant/ThermalAlert.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>

namespace cindertop {

namespace {

std::string_view titleOf(ThermalAlertKind kind) {
    switch (kind) {
    case ThermalAlertKind::sustainedThrottling:
        return "Sustained Thermal Pressure";
    case ThermalAlertKind::critical:
        return "Critical Thermal Pressure";
    case ThermalAlertKind::recovery:
        return "Thermal Pressure Eased";
    }
    return {};
}

ThermalAlert makeAlert(ThermalAlertKind kind, const ThermalAlertInput& input, OperatingSystem system) {
    return {.kind = kind,
            .title = std::string(titleOf(kind)),
            .body = thermalAlertBody(kind, input.recommendationSnapshot, input.topOffenderLabel, system),
            .issuedAt = input.now};
}

} // namespace

std::optional<ThermalAlert> ThermalAlertRuleEngine::evaluate(const ThermalAlertInput& input,
                                                             const ThermalAlertConfiguration& configuration) {
    moveDeliveriesBeforeNow(input.now);
    const auto kind = followTransition(input, configuration.minimumRecoveryPressureDuration);
    if (!kind || !configuration.isEnabled || !passesLevelFilter(*kind, configuration.minimumLevel) ||
        !canDeliver(*kind, configuration, input.now)) {
        return std::nullopt;
    }
    recordDelivery(*kind, input.now);
    return makeAlert(*kind, input, system_);
}

/// The transition since the last evaluation, the most severe one first. A critical one also uses up the
/// beginning of sustained pressure that comes with it.
std::optional<ThermalAlertKind>
ThermalAlertRuleEngine::followTransition(const ThermalAlertInput& input,
                                         Seconds minimumRecoveryPressureDuration) {
    const auto& pressure = input.systemContext.sustainedPressure;
    const bool isCritical = input.score.level == ThermalLevel::critical;
    const bool isHot = input.score.level >= ThermalLevel::serious;
    if (isAfterSleep_ && !isHot) {
        forgetHeat();
    }
    isAfterSleep_ = isAfterSleep_ && isHot && !pressure.isSustained;
    // Heat from before a sleep continues; it has merely not lasted long enough again to be sustained.
    const bool isStillSustained = pressure.isSustained || (isAfterSleep_ && wasSustainedPressure_);
    const bool hadSustainedPressure = std::exchange(wasSustainedPressure_, isStillSustained);
    const bool hadCriticalLevel = std::exchange(wasCritical_, isCritical);
    if (pressure.isSustained) {
        mostRecentSustainedDuration_ = std::max(mostRecentSustainedDuration_, pressure.activeDuration);
    }

    if (isCritical && !hadCriticalLevel) {
        return ThermalAlertKind::critical;
    }
    if (pressure.isSustained && !hadSustainedPressure) {
        return ThermalAlertKind::sustainedThrottling;
    }
    const bool hasEased = hadSustainedPressure && !pressure.isSustained && !isHot;
    if (hasEased && mostRecentSustainedDuration_ >= minimumRecoveryPressureDuration) {
        return ThermalAlertKind::recovery;
    }
    return std::nullopt;
}

void ThermalAlertRuleEngine::forgetHeat() {
    wasSustainedPressure_ = false;
    wasCritical_ = false;
    deliveredCriticalSinceLastRecovery_ = false;
}

/// Deliveries in the future date from before the wall clock was set back. Their cooldowns start over, or no
/// alert would come until the clock has caught up.
void ThermalAlertRuleEngine::moveDeliveriesBeforeNow(Instant now) {
    if (lastDeliveredAt_) {
        lastDeliveredAt_ = std::min(*lastDeliveredAt_, now);
    }
    for (auto& [kind, deliveredAt] : lastDeliveredAtByKind_) {
        deliveredAt = std::min(deliveredAt, now);
    }
}

/// With critical episodes only, a recovery is reported only after its episode was.
bool ThermalAlertRuleEngine::passesLevelFilter(ThermalAlertKind kind, ThermalLevel minimumLevel) const {
    if (minimumLevel != ThermalLevel::critical || kind == ThermalAlertKind::critical) {
        return true;
    }
    return kind == ThermalAlertKind::recovery && deliveredCriticalSinceLastRecovery_;
}

bool ThermalAlertRuleEngine::canDeliver(ThermalAlertKind kind, const ThermalAlertConfiguration& configuration,
                                        Instant now) const {
    const auto lastOfKind = lastDeliveredAtByKind_.find(kind);
    if (lastOfKind != lastDeliveredAtByKind_.end() &&
        secondsBetween(lastOfKind->second, now) < configuration.eventCooldown) {
        return false;
    }
    return kind == ThermalAlertKind::critical || !lastDeliveredAt_ ||
           secondsBetween(*lastDeliveredAt_, now) >= configuration.globalCooldown;
}

void ThermalAlertRuleEngine::recordDelivery(ThermalAlertKind kind, Instant now) {
    lastDeliveredAt_ = now;
    lastDeliveredAtByKind_[kind] = now;
    if (kind != ThermalAlertKind::sustainedThrottling) {
        deliveredCriticalSinceLastRecovery_ = kind == ThermalAlertKind::critical;
    }
}

} // namespace cindertop
