#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QString>
#include <QStringList>
#include <QVariantList>
#include <QVariantMap>
#include <expected>

namespace cindertop::ui {

/// What a caller on the bus is told when a call cannot be carried out.
struct BusError {
    QString name; ///< "org.freedesktop.DBus.Error.InvalidArgs"
    QString message;
};

using BusAnswer = std::expected<QVariantList, BusError>;

/// An object on the session bus with one interface, whose properties are read only. Without a bus it does
/// nothing. Main thread.
class BusObject : public QDBusVirtualObject {
public:
    ~BusObject() override;

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

protected:
    using Answer = BusAnswer;

    BusObject(QDBusConnection connection, const char* path, const char* interface);

    /// Puts the object on the bus; to be called when it is complete. False where there is none, or it
    /// refuses.
    bool appear();
    /// Takes it from the bus, and leaves it to `appear` to put it on another one.
    void moveTo(const QDBusConnection& connection);
    void send(const char* signal, const QVariantList& arguments = {}) const;
    /// PropertiesChanged. What is invalidated is named without its value.
    void sendChanges(const QVariantMap& changed, const QStringList& invalidated) const;
    static void reply(const QDBusConnection& connection, const QDBusMessage& question, const Answer& answer);

    /// Whether it is a call of the interface, and no question for properties.
    bool isCall(const QDBusMessage& message) const;

    /// All of them, as they are now.
    virtual QVariantMap properties() const = 0;

    /// Invalid where there is none of that name.
    virtual QVariant propertyValue(const QString& name) const { return properties().value(name); }

    /// A call of the interface, whose arguments need not fit.
    virtual Answer call(const QDBusMessage& message) = 0;

    static std::unexpected<BusError> unknownMethod(const QDBusMessage& message);
    static std::unexpected<BusError> invalidArguments(const QString& reason);

    const QDBusConnection& connection() const { return connection_; }

private:
    void disappear();
    Answer answerProperties(const QDBusMessage& message) const;

    QDBusConnection connection_;
    QString path_;
    QString interface_;
};

} // namespace cindertop::ui
