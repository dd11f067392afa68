#pragma once

#include "platform/UserNotificationCenter.h"

#include <QDBusMessage>
#include <QString>

namespace cindertop::desktop {

/// The service's name, which is its interface's too, and the object that has it (Desktop Notifications
/// Specification 1.2).
inline constexpr QLatin1String notificationService{"org.freedesktop.Notifications"};
inline constexpr QLatin1String notificationPath{"/org/freedesktop/Notifications"};

/// A call of one of the service's methods, yet without arguments.
QDBusMessage notificationCall(const QString& method);

/// The call that shows a notification in the place of `replacedId`, or a new one for 0. A server that shows
/// markup in bodies gets the text with its special characters escaped.
QDBusMessage notifyCall(const UserNotificationContent& content, uint replacedId, bool bodyIsMarkup);

} // namespace cindertop::desktop
