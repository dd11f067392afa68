#pragma once

#include "support/Instant.h"

#include <expected>
#include <functional>
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

/// What the system says about posting notifications. `unknown` is every answer that is none of the others,
/// and none at all.
enum class NotificationAuthorizationStatus {
    notDetermined,
    denied,
    authorized,
    provisional, ///< allowed on trial, without having asked
    ephemeral,   ///< allowed for a short while
    unknown,
};

/// What the user is asked to allow.
struct NotificationAuthorizationOptions {
    bool alert{};
    bool sound{};
    bool badge{};

    bool operator==(const NotificationAuthorizationOptions&) const = default;
};

/// The user's answer.
enum class NotificationPermission { granted, refused };

/// How a notification shows that arrives while the application is in front.
struct NotificationPresentationOptions {
    bool banner{};
    bool list{}; ///< in the list of past notifications
    bool sound{};
    bool badge{};

    bool operator==(const NotificationPresentationOptions&) const = default;
};

/// The centre could not carry out what it was asked; `message` is for logs.
struct NotificationError {
    std::string message;

    bool operator==(const NotificationError&) const = default;
};

/// Whom the centre asks. Main thread.
class UserNotificationCenterDelegate {
public:
    virtual ~UserNotificationCenterDelegate() = default;
    /// `request` arrives while the application is in front.
    virtual NotificationPresentationOptions willPresent(const UserNotificationRequest& request) const = 0;
};

/// The system's notification service. Called from the main thread; each completion runs there too, exactly
/// once unless the centre is destroyed first, at the earliest within the call itself.
class UserNotificationCenter {
public:
    using StatusCompletion = std::function<void(NotificationAuthorizationStatus)>;
    using PermissionCompletion =
        std::function<void(std::expected<NotificationPermission, NotificationError>)>;
    using AddCompletion = std::function<void(std::expected<void, NotificationError>)>;

    virtual ~UserNotificationCenter() = default;

    /// One delegate at a time: it must outlive the centre or take itself away (null), and only then may
    /// another come.
    virtual void setDelegate(const UserNotificationCenterDelegate* delegate) = 0;

    /// Reads what is allowed. Never prompts.
    virtual void readAuthorizationStatus(StatusCompletion completion) = 0;

    /// Asks the user, who may take any time to answer. Once answered, the system remembers and does not ask
    /// again.
    virtual void requestAuthorization(NotificationAuthorizationOptions options,
                                      PermissionCompletion completion) = 0;

    /// Posts a notification; completes when the system has accepted or turned it down.
    virtual void add(UserNotificationRequest request, AddCompletion completion) = 0;
};

} // namespace cindertop
