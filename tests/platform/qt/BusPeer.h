#pragma once

#include "platform/linux/PrivateBus.h"
#include "platform/qt/EventLoop.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QObject>

namespace cindertop::desktop {

/// A connection of its own, closed with the object.
class Connection {
public:
    Connection(const linux_platform::PrivateBus& bus, const char* name)
        : name_(name),
          connection(QDBusConnection::connectToBus(QString::fromStdString(bus.address()), name_)) {}

    ~Connection() { QDBusConnection::disconnectFromBus(name_); }

    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

private:
    QString name_;

public:
    QDBusConnection connection;
};

/// Another program on the bus: asks, and hears signals, while the event loop runs.
class BusPeer : public QObject {
    Q_OBJECT
public:
    static constexpr const char* properties = "org.freedesktop.DBus.Properties";

    BusPeer(const linux_platform::PrivateBus& bus, const char* name) : bus_(bus, name) {}

    /// The answer, which may be an error.
    QDBusMessage call(const QDBusMessage& question) const {
        const QDBusPendingCallWatcher pending(bus_.connection.asyncCall(question));
        runUntil([&] { return pending.isFinished(); });
        return pending.reply();
    }

protected:
    /// `take` gets each signal of the interface from now on.
    void hear(const char* interface) {
        bus_.connection.connect("", "", interface, "", this, SLOT(take(QDBusMessage)));
    }

    /// Without waiting for an answer.
    void send(const QDBusMessage& message) const { bus_.connection.send(message); }

private:
    Q_SLOT virtual void take(const QDBusMessage& signal) = 0;

    Connection bus_;
};

} // namespace cindertop::desktop
