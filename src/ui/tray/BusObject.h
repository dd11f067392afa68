#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QString>
#include <QVariantList>
#include <QVariantMap>
#include <expected>

namespace cindertop::ui {

/// An object on the session bus with one interface, whose properties are read only. Without a bus it does
/// nothing. Main thread.
class BusObject : public QDBusVirtualObject {
public:
    ~BusObject() override;

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

protected:
    /// What a caller is told when a call cannot be carried out.
    struct Error {
        QString name;
        QString message;
    };

    using Answer = std::expected<QVariantList, Error>;

    BusObject(QDBusConnection connection, const char* path, const char* interface);

    /// Puts the object on the bus; to be called when it is complete.
    void appear();
    void send(const char* signal, const QVariantList& arguments = {}) const;

    /// All of them, as they are now.
    virtual QVariantMap properties() const = 0;
    /// A call of the interface, whose arguments need not fit.
    virtual Answer call(const QDBusMessage& message) = 0;

    static std::unexpected<Error> unknownMethod(const QDBusMessage& message);
    static std::unexpected<Error> invalidArguments(const QString& reason);

    const QDBusConnection& connection() const { return connection_; }

private:
    Answer answer(const QDBusMessage& message);
    Answer answerProperties(const QDBusMessage& message) const;

    QDBusConnection connection_;
    QString path_;
    QString interface_;
};

} // namespace cindertop::ui
