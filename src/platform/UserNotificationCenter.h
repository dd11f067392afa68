#pragma once

#include "platform/UserNotificationRequest.h"

#include <expected>
#include <functional>
#include <string>

namespace cindertop {

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
