#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QString>
#include <QStringList>

namespace cindertop::ui {

/// A desktop's list of status items with its own connection to the bus, which goes with the object as if the
/// panel had died.
class ScriptedWatcher final : public QDBusVirtualObject {
public:
    QStringList registered;

    ScriptedWatcher(const QString& busAddress, bool hasHost)
        : connection_(QDBusConnection::connectToBus(busAddress, connectionName)), hasHost_(hasHost) {
        connection_.registerVirtualObject(path, this);
        connection_.registerService(name);
    }

    ~ScriptedWatcher() override {
        QDBusConnection connection(connectionName);
        if (connection.isConnected()) {
            connection.unregisterService(name); // over when the call returns, unlike the end of a connection
        }
        QDBusConnection::disconnectFromBus(connectionName);
    }

    ScriptedWatcher(const ScriptedWatcher&) = delete;
    ScriptedWatcher& operator=(const ScriptedWatcher&) = delete;

    void setHost(bool hasHost) {
        hasHost_ = hasHost;
        connection_.send(QDBusMessage::createSignal(
            path, name, hasHost ? "StatusNotifierHostRegistered" : "StatusNotifierHostUnregistered"));
    }

    QString introspect(const QString& /*path*/) const override { return {}; }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        if (message.member() == "RegisterStatusNotifierItem") {
            registered.append(message.arguments().value(0).toString());
            return connection.send(message.createReply());
        }
        const bool asksForHost =
            message.arguments() == QVariantList{QString(name), "IsStatusNotifierHostRegistered"};
        return asksForHost &&
               connection.send(message.createReply(QVariant::fromValue(QDBusVariant(QVariant(hasHost_)))));
    }

private:
    static constexpr const char* name = "org.kde.StatusNotifierWatcher";
    static constexpr const char* path = "/StatusNotifierWatcher";
    static constexpr const char* connectionName = "watcher";

    QDBusConnection connection_;
    bool hasHost_;
};

} // namespace cindertop::ui
