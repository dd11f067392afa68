#include "assistant/ThermalAlertRuleEngine.h"

#include "assistant/ThermalAlertBody.h"

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
    const bool hadSustainedPressure = std::exchange(wasSustainedPressure_, pressure.isSustained);
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
    const bool hasEased =
        hadSustainedPressure && !pressure.isSustained && input.score.level < ThermalLevel::serious;
    if (hasEased && mostRecentSustainedDuration_ >= minimumRecoveryPressureDuration) {
        return ThermalAlertKind::recovery;
    }
    return std::nullopt;
}

/// Who wants critical episodes only is told of a recovery only after having been told of the episode.
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
