#pragma once

#include "assistant/CinderInsight.h"
#include "platform/UserNotificationCenter.h"
#include "support/Enumeration.h"
#include "support/Instant.h"
#include "support/Wording.h"

#include <array>
#include <optional>
#include <string>

namespace cindertop {

/// What an alert tells. The raw value is part of the notification's identifier.
enum class ThermalAlertKind {
    sustainedThrottling, ///< pressure has become sustained
    critical,            ///< the level has reached critical
    recovery,            ///< sustained pressure has eased
};

template <>
struct EnumerationTable<ThermalAlertKind> {
    static constexpr std::array cases{
        EnumerationCase{ThermalAlertKind::sustainedThrottling, "sustainedThrottling"},
        EnumerationCase{ThermalAlertKind::critical, "critical"},
        EnumerationCase{ThermalAlertKind::recovery, "recovery"},
    };
};

/// One alert, ready to post.
struct ThermalAlert {
    ThermalAlertKind kind;
    std::string title;
    std::string body;
    Instant issuedAt; ///< the instant of the evaluation that made it

    bool operator==(const ThermalAlert&) const = default;
};

/// What an alert of this kind says. The current advice decides what it suggests; the label, the busiest
/// offender's name, has its place in the sentence where the advice is about an application. `system` decides
/// the wording.
std::string thermalAlertBody(ThermalAlertKind kind, const CinderRecommendationSnapshot& recommendation,
                             const std::optional<std::string>& topOffenderLabel, OperatingSystem system);

/// The quiet notification that tells of an alert. Two alerts have the same identifier only when they are of
/// one kind and of one second.
UserNotificationRequest notificationRequestFor(const ThermalAlert& alert);

} // namespace cindertop
