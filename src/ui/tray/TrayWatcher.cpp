#include "ui/tray/TrayWatcher.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <utility>

namespace cindertop::ui {

namespace {

constexpr QLatin1String watcherName{"org.kde.StatusNotifierWatcher"};
constexpr QLatin1String watcherPath{"/StatusNotifierWatcher"};

} // namespace

TrayWatcher::TrayWatcher(QDBusConnection connection, QString itemService)
    : connection_(std::move(connection)),
      itemService_(std::move(itemService)),
      serviceWatcher_(watcherName, connection_, QDBusServiceWatcher::WatchForOwnerChange) {
    if (!connection_.isConnected()) { // Qt would answer no call
        isSettled_ = true;
        return;
    }
    connect(&serviceWatcher_, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString& /*name*/, const QString& /*oldOwner*/, const QString& owner) {
                watcherIs(owner);
            });
    for (const auto* const signal : {"StatusNotifierHostRegistered", "StatusNotifierHostUnregistered"}) {
        connection_.connect(watcherName, watcherPath, watcherName, signal, this, SLOT(askForHost()));
    }
    askForWatcher();
}

void TrayWatcher::askForWatcher() {
    auto question = QDBusMessage::createMethodCall("org.freedesktop.DBus", "/org/freedesktop/DBus",
                                                   "org.freedesktop.DBus", "GetNameOwner");
    question << QString(watcherName);
    ask(question, [this](const QDBusMessage& answer) {
        // Without an owner the answer is an error.
        watcherIs(answer.type() == QDBusMessage::ReplyMessage ? answer.arguments().value(0).toString()
                                                              : QString());
    });
}

void TrayWatcher::watcherIs(const QString& owner) {
    if (owner.isEmpty()) {
        owner_.clear();
        settle(false);
    } else if (std::exchange(owner_, owner) != owner) {
        registerItem();
        askForHost();
    }
}

void TrayWatcher::registerItem() {
    auto call =
        QDBusMessage::createMethodCall(owner_, watcherPath, watcherName, "RegisterStatusNotifierItem");
    call << itemService_;
    ask(call, [](const QDBusMessage& /*answer*/) {});
}

void TrayWatcher::askForHost() {
    if (owner_.isEmpty()) {
        return;
    }
    auto question =
        QDBusMessage::createMethodCall(owner_, watcherPath, "org.freedesktop.DBus.Properties", "Get");
    question << QString(watcherName) << "IsStatusNotifierHostRegistered";
    ask(question, [this](const QDBusMessage& answer) {
        settle(answer.arguments().value(0).value<QDBusVariant>().variant().toBool());
    });
}

void TrayWatcher::ask(const QDBusMessage& question, std::function<void(const QDBusMessage& answer)> use) {
    auto* const call = new QDBusPendingCallWatcher(connection_.asyncCall(question), this);
    connect(call, &QDBusPendingCallWatcher::finished, this,
            [this, use = std::move(use), owner = owner_](QDBusPendingCallWatcher* finished) {
                finished->deleteLater();
                if (owner == owner_) {
                    use(finished->reply());
                }
            });
}

void TrayWatcher::settle(bool hasHost) {
    const bool isFirst = !std::exchange(isSettled_, true);
    const bool isNews = std::exchange(hasHost_, hasHost) != hasHost || isFirst;
    if (isNews && hostObserver_) {
        hostObserver_();
    }
}

} // namespace cindertop::ui
