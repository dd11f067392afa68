#include "platform/qt/SessionBus.h"

#include <utility>

namespace cindertop::desktop {

namespace {

/// Qt's connection of that name is never made, so that it is never connected.
constexpr auto noConnection = "cindertop-no-bus";

/// Names of connections are not used again: what still holds an old one must not find the new one under it.
QString nextName() {
    static int made = 0;
    return QString("cindertop-bus-%1").arg(++made);
}

} // namespace

QString sessionBusAddress() {
    const auto named = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");
    if (!named.isEmpty()) {
        return named.startsWith("autolaunch:") ? QString() : named;
    }
    const auto folder = qEnvironmentVariable("XDG_RUNTIME_DIR");
    return folder.isEmpty() ? QString() : "unix:path=" + folder + "/bus";
}

SessionBus::SessionBus(Timers& timers, QString address)
    : timers_(timers), address_(std::move(address)), connection_(noConnection) {
    if (address_.isEmpty()) {
        return;
    }
    connectToBus();
    if (!connection_.isConnected()) {
        tryAgainLater();
    }
}

SessionBus::~SessionBus() {
    drop();
}

void SessionBus::connectToBus() {
    name_ = nextName();
    connection_ = QDBusConnection::connectToBus(address_, name_);
    // libdbus itself says so, for no sender.
    connection_.connect(QString(), "/org/freedesktop/DBus/Local", "org.freedesktop.DBus.Local",
                        "Disconnected", this, SLOT(noticeLoss()));
    if (!connection_.isConnected()) {
        drop();
    }
}

void SessionBus::noticeLoss() {
    // The connection is still at work on this signal.
    waiting_ = timers_.start(std::chrono::seconds{0}, [this] {
        drop();
        tryAgainLater();
        if (observer_) {
            observer_(connection_);
        }
    });
}

void SessionBus::tryAgainLater() {
    waiting_ = timers_.start(retryInterval, [this] { retry(); });
}

void SessionBus::retry() {
    connectToBus();
    if (!connection_.isConnected()) {
        tryAgainLater();
        return;
    }
    waiting_.reset();
    if (observer_) {
        observer_(connection_);
    }
}

void SessionBus::drop() {
    connection_ = QDBusConnection(noConnection);
    if (!name_.isEmpty()) {
        QDBusConnection::disconnectFromBus(std::exchange(name_, QString()));
    }
}

} // namespace cindertop::desktop
