#pragma once

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QString>
#include <QStringList>
#include <QVariantMap>
#include <string>
#include <vector>

namespace cindertop::desktop {

/// What a program asked to be shown.
struct Notified {
    QVariantList arguments; ///< without the hints
    QVariantMap hints;

    uint replacedId() const { return arguments.at(1).toUInt(); }

    QString body() const { return arguments.at(4).toString(); }
};

/// A notification server with its own connection to the bus, which goes with the object as if the server had
/// died.
class ScriptedNotificationServer final : public QDBusVirtualObject {
public:
    enum class Behaviour { answers, fails, answersNonsense, hangs };

    QStringList capabilities{"body", "body-markup"};
    Behaviour behaviour = Behaviour::answers;
    int capabilityReads = 0;
    std::vector<Notified> notified; ///< also what was not answered

    /// Numbers its notifications from `firstId` on.
    ScriptedNotificationServer(const std::string& busAddress, uint firstId)
        : connectionName_(QString::number(firstId)),
          connection_(QDBusConnection::connectToBus(QString::fromStdString(busAddress), connectionName_)),
          nextId_(firstId) {
        connection_.registerVirtualObject("/org/freedesktop/Notifications", this);
        connection_.registerService("org.freedesktop.Notifications");
    }

    ~ScriptedNotificationServer() override {
        QDBusConnection connection(connectionName_);
        if (connection.isConnected()) {
            // Unlike the end of a connection, this is over when the call returns.
            connection.unregisterService("org.freedesktop.Notifications");
        }
        QDBusConnection::disconnectFromBus(connectionName_);
    }

    ScriptedNotificationServer(const ScriptedNotificationServer&) = delete;
    ScriptedNotificationServer& operator=(const ScriptedNotificationServer&) = delete;

    /// Gives the service's name up, for another server to take.
    void resign() { connection_.unregisterService("org.freedesktop.Notifications"); }

    /// Answers the last call that hangs.
    void answerLate(const QVariant& answer) { connection_.send(unanswered_.createReply(answer)); }

    QString introspect(const QString& /*path*/) const override { return {}; }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        QVariant answer;
        if (message.member() == "GetCapabilities") {
            ++capabilityReads;
            answer = capabilities;
        } else if (message.member() == "Notify" && message.signature() == "susssasa{sv}i") {
            answer = take(message.arguments());
        } else {
            return false;
        }
        reply(message, answer, connection);
        return true;
    }

private:
    uint take(QVariantList arguments) {
        const auto hints = qdbus_cast<QVariantMap>(arguments.takeAt(6));
        notified.push_back({arguments, hints});
        const uint replaced = notified.back().replacedId();
        return replaced == 0 ? nextId_++ : replaced;
    }

    void reply(const QDBusMessage& message, const QVariant& answer, const QDBusConnection& connection) {
        switch (behaviour) {
        case Behaviour::answers:
            connection.send(message.createReply(answer));
            return;
        case Behaviour::fails:
            connection.send(message.createErrorReply(QDBusError::LimitsExceeded, "too many"));
            return;
        case Behaviour::answersNonsense:
            connection.send(message.createReply("nonsense"));
            return;
        case Behaviour::hangs:
            unanswered_ = message;
            return;
        }
    }

    QString connectionName_; ///< each server has its own, as a number
    QDBusConnection connection_;
    uint nextId_;
    QDBusMessage unanswered_;
};

} // namespace cindertop::desktop
