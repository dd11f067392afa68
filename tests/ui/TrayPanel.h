#pragma once

#include "platform/qt/EventLoop.h"
#include "ui/tray/StatusMenu.h"
#include "ui/tray/StatusNotifierItem.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QObject>
#include <QStringList>
#include <string>
#include <utility>

namespace cindertop::ui {

/// A connection of its own, closed with the object.
class Connection {
public:
    Connection(const QString& address, const char* name)
        : name_(name), connection(QDBusConnection::connectToBus(address, name_)) {}

    ~Connection() { QDBusConnection::disconnectFromBus(name_); }

    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

private:
    QString name_;

public:
    QDBusConnection connection;
};

/// A panel that talks to the program and writes down the signals it hears.
class TrayPanel final : public QObject {
    Q_OBJECT

public:
    explicit TrayPanel(const QString& address) : bus_(address, "panel") {
        for (const auto* const interface : {StatusNotifierItem::interface, StatusMenu::interface}) {
            bus_.connection.connect("", "", interface, "", this, SLOT(hear(QDBusMessage)));
        }
    }

    void setServer(const QString& name) { server_ = name; }

    /// Asks; the name of an error stands in place of values.
    QVariantList ask(const char* path, const char* interface, const QString& member,
                     const QVariantList& arguments) {
        auto question = QDBusMessage::createMethodCall(server_, path, interface, member);
        question.setArguments(arguments);
        const QDBusPendingCallWatcher call(bus_.connection.asyncCall(question));
        desktop::runUntil([&] { return call.isFinished(); });
        const auto answer = call.reply();
        return answer.type() == QDBusMessage::ErrorMessage ? QVariantList{answer.errorName()}
                                                           : answer.arguments();
    }

    QVariant get(const char* path, const char* interface, const QString& name) {
        const auto answer = ask(path, "org.freedesktop.DBus.Properties", "Get", {interface, name}).value(0);
        return answer.canConvert<QDBusVariant>() ? answer.value<QDBusVariant>().variant() : answer;
    }

    /// What it has heard once everything that was sent before has arrived.
    std::string takeHeard() {
        ask(StatusMenu::path, "org.freedesktop.DBus.Properties", "GetAll", {""});
        return std::exchange(heard_, {}).join(" ").toStdString();
    }

private:
    Q_SLOT void hear(const QDBusMessage& signal) { heard_.append(signal.member()); }

    Connection bus_;
    QString server_;
    QStringList heard_;
};

} // namespace cindertop::ui
