#include "platform/qt/NotificationMessage.h"

#include <QStringList>
#include <QVariantMap>

namespace cindertop::desktop {

namespace {

constexpr int serverDecidesWhenItExpires = -1;

QString escaped(QString text) {
    return text.replace('&', "&amp;").replace('<', "&lt;").replace('>', "&gt;");
}

/// 0 low, 1 normal, 2 critical: the last stays on the screen and breaks through "do not disturb".
uchar urgencyOf(NotificationInterruptionLevel level) {
    switch (level) {
    case NotificationInterruptionLevel::passive:
        return 0;
    case NotificationInterruptionLevel::active:
    case NotificationInterruptionLevel::timeSensitive:
        return 1;
    case NotificationInterruptionLevel::critical:
        return 2;
    }
    return 1;
}

QVariantMap hintsFor(const UserNotificationContent& content) {
    QVariantMap hints{
        {"desktop-entry", "cindertop"}, // the desktop's settings know the program by this name
        {"urgency",
         QVariant::fromValue(urgencyOf(content.interruptionLevel))}, // the servers insist on a byte
        {"suppress-sound", !content.sound},
        {"category", QString::fromStdString("x-cindertop." + content.categoryIdentifier)},
    };
    if (content.sound) {
        hints.insert("sound-name", QString::fromStdString(*content.sound));
    }
    return hints;
}

} // namespace

QDBusMessage notificationCall(const QString& method) {
    return QDBusMessage::createMethodCall(notificationService, notificationPath, notificationService, method);
}

QDBusMessage notifyCall(const UserNotificationContent& content, uint replacedId, bool bodyIsMarkup) {
    const auto body = QString::fromStdString(content.body);
    auto call = notificationCall("Notify");
    call.setArguments({"Cindertop", replacedId, "cindertop", QString::fromStdString(content.title),
                       bodyIsMarkup ? escaped(body) : body, QStringList{}, hintsFor(content),
                       serverDecidesWhenItExpires});
    return call;
}

} // namespace cindertop::desktop
