#pragma once

#include "platform/qt/BusPeer.h"
#include "ui/tray/StatusMenu.h"
#include "ui/tray/StatusNotifierItem.h"

#include <QStringList>
#include <string>
#include <utility>

namespace cindertop::ui {

/// A panel that talks to the program and writes down the signals it hears.
class TrayPanel final : public desktop::BusPeer {
public:
    explicit TrayPanel(const linux_platform::PrivateBus& bus) : BusPeer(bus, "panel") {
        hear(StatusNotifierItem::interface);
        hear(StatusMenu::interface);
    }

    void setServer(const QString& name) { server_ = name; }

    /// Asks; the name of an error stands in place of values.
    QVariantList ask(const char* path, const char* interface, const QString& member,
                     const QVariantList& arguments) const {
        auto question = QDBusMessage::createMethodCall(server_, path, interface, member);
        question.setArguments(arguments);
        const auto answer = call(question);
        return answer.type() == QDBusMessage::ErrorMessage ? QVariantList{answer.errorName()}
                                                           : answer.arguments();
    }

    QVariant get(const char* path, const char* interface, const QString& name) const {
        const auto answer = ask(path, properties, "Get", {interface, name}).value(0);
        return answer.canConvert<QDBusVariant>() ? answer.value<QDBusVariant>().variant() : answer;
    }

    /// What it has heard once everything that was sent before has arrived.
    std::string takeHeard() {
        ask(StatusMenu::path, properties, "GetAll", {""});
        return std::exchange(heard_, {}).join(" ").toStdString();
    }

private:
    void take(const QDBusMessage& signal) override { heard_.append(signal.member()); }

    QString server_;
    QStringList heard_;
};

} // namespace cindertop::ui
