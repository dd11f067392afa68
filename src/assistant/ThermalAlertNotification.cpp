#include "assistant/ThermalAlertNotification.h"

#include <chrono>
#include <optional>
#include <string>

namespace cindertop {

namespace {

constexpr auto thread = "cindertop.thermal";

/// Whole seconds since the Unix epoch; the fraction is dropped.
std::string secondsText(Instant instant) {
    return std::to_string(
        std::chrono::duration_cast<std::chrono::seconds>(instant.time_since_epoch()).count());
}

} // namespace

UserNotificationRequest notificationRequestFor(const ThermalAlert& alert) {
    const std::string category(rawValue(alert.kind));
    return {
        .identifier = std::string(thread) + "." + category + "." + secondsText(alert.issuedAt),
        .content =
            {
                .title = alert.title,
                .body = alert.body,
                .threadIdentifier = thread,
                .categoryIdentifier = category,
                .interruptionLevel = NotificationInterruptionLevel::active,
                .sound = std::nullopt,
                .badge = std::nullopt,
            },
        .delay = std::nullopt,
    };
}

} // namespace cindertop
