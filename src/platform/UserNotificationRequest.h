#pragma once

#include "support/Instant.h"

#include <optional>
#include <string>

namespace cindertop {

/// How much a notification may disturb. `active` is the ordinary one; it does not break through "do not
/// disturb".
enum class NotificationInterruptionLevel { passive, active, timeSensitive, critical };

/// What a notification shows. Texts are UTF-8.
struct UserNotificationContent {
    std::string title;
    std::string body;
    std::string threadIdentifier;   ///< notifications of one thread belong together
    std::string categoryIdentifier; ///< what the notification is about, for the system's own grouping
    NotificationInterruptionLevel interruptionLevel{NotificationInterruptionLevel::active};
    std::optional<std::string> sound; ///< name of a sound; none is silent
    std::optional<int> badge;         ///< number on the application's icon; none leaves the icon alone

    bool operator==(const UserNotificationContent&) const = default;
};

/// One notification to post.
struct UserNotificationRequest {
    std::string identifier; ///< a request with the identifier of an earlier one replaces it
    UserNotificationContent content;
    std::optional<Seconds> delay; ///< none: deliver at once

    bool operator==(const UserNotificationRequest&) const = default;
};

} // namespace cindertop
