#include "ui/tray/BusObject.h"

#include <QDBusVariant>
#include <utility>

namespace cindertop::ui {

namespace {

constexpr QLatin1String propertiesInterface{"org.freedesktop.DBus.Properties"};

} // namespace

BusObject::BusObject(QDBusConnection connection, const char* path, const char* interface)
    : connection_(std::move(connection)), path_(path), interface_(interface) {}

BusObject::~BusObject() {
    disappear();
}

bool BusObject::appear() {
    return connection_.isConnected() && connection_.registerVirtualObject(path_, this);
}

void BusObject::disappear() {
    if (connection_.isConnected()) { // Qt would ask a bus that is not there
        connection_.unregisterObject(path_);
    }
}

void BusObject::moveTo(const QDBusConnection& connection) {
    disappear();
    connection_ = connection;
}

void BusObject::send(const char* signal, const QVariantList& arguments) const {
    auto message = QDBusMessage::createSignal(path_, interface_, signal);
    message.setArguments(arguments);
    // Nothing is sent without a bus.
    [[maybe_unused]] const bool isSent = connection_.send(message);
}

void BusObject::sendChanges(const QVariantMap& changed, const QStringList& invalidated) const {
    auto message = QDBusMessage::createSignal(path_, propertiesInterface, "PropertiesChanged");
    message << interface_ << changed << invalidated;
    [[maybe_unused]] const bool isSent = connection_.send(message);
}

void BusObject::reply(const QDBusConnection& connection, const QDBusMessage& question, const Answer& answer) {
    if (question.isReplyRequired()) {
        // Without a caller no answer is needed.
        [[maybe_unused]] const bool isSent =
            connection.send(answer ? question.createReply(*answer)
                                   : question.createErrorReply(answer.error().name, answer.error().message));
    }
}

bool BusObject::isCall(const QDBusMessage& message) const {
    return message.interface().isEmpty() || message.interface() == interface_;
}

bool BusObject::handleMessage(const QDBusMessage& message, const QDBusConnection& connection) {
    if (isCall(message)) {
        reply(connection, message, call(message));
        return true;
    }
    if (message.interface() == propertiesInterface) {
        reply(connection, message, answerProperties(message));
        return true;
    }
    return false;
}

BusObject::Answer BusObject::answerProperties(const QDBusMessage& message) const {
    const auto interface = message.arguments().value(0).toString();
    if (!interface.isEmpty() && interface != interface_) {
        return std::unexpected(
            BusError{"org.freedesktop.DBus.Error.UnknownInterface", "There is no interface " + interface});
    }
    if (message.member() == QLatin1String("GetAll") && message.signature() == QLatin1String("s")) {
        return QVariantList{properties()};
    }
    if (message.member() == QLatin1String("Set")) {
        return std::unexpected(
            BusError{"org.freedesktop.DBus.Error.PropertyReadOnly", "The properties are read only"});
    }
    if (message.member() != QLatin1String("Get") || message.signature() != QLatin1String("ss")) {
        return unknownMethod(message);
    }
    const auto name = message.arguments().at(1).toString();
    const auto value = propertyValue(name);
    if (!value.isValid()) {
        return std::unexpected(
            BusError{"org.freedesktop.DBus.Error.UnknownProperty", "There is no property " + name});
    }
    return QVariantList{QVariant::fromValue(QDBusVariant(value))};
}

std::unexpected<BusError> BusObject::unknownMethod(const QDBusMessage& message) {
    return std::unexpected(
        BusError{"org.freedesktop.DBus.Error.UnknownMethod",
                 "There is no method " + message.member() + " with arguments (" + message.signature() + ")"});
}

std::unexpected<BusError> BusObject::invalidArguments(const QString& reason) {
    return std::unexpected(BusError{"org.freedesktop.DBus.Error.InvalidArgs", reason});
}

} // namespace cindertop::ui
