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
    if (connection_.isConnected()) { // Qt would ask a bus that is not there
        connection_.unregisterObject(path_);
    }
}

void BusObject::appear() {
    if (connection_.isConnected()) {
        connection_.registerVirtualObject(path_, this);
    }
}

void BusObject::send(const char* signal, const QVariantList& arguments) const {
    auto message = QDBusMessage::createSignal(path_, interface_, signal);
    message.setArguments(arguments);
    // Nothing is sent without a bus.
    [[maybe_unused]] const bool isSent = connection_.send(message);
}

bool BusObject::handleMessage(const QDBusMessage& message, const QDBusConnection& connection) {
    const auto& interface = message.interface();
    if (!interface.isEmpty() && interface != interface_ && interface != propertiesInterface) {
        return false;
    }
    const auto result = answer(message);
    if (message.isReplyRequired()) {
        // Without a caller no answer is needed.
        [[maybe_unused]] const bool isSent =
            connection.send(result ? message.createReply(*result)
                                   : message.createErrorReply(result.error().name, result.error().message));
    }
    return true;
}

BusObject::Answer BusObject::answer(const QDBusMessage& message) {
    return message.interface() == propertiesInterface ? answerProperties(message) : call(message);
}

BusObject::Answer BusObject::answerProperties(const QDBusMessage& message) const {
    const auto interface = message.arguments().value(0).toString();
    if (!interface.isEmpty() && interface != interface_) {
        return std::unexpected(
            Error{"org.freedesktop.DBus.Error.UnknownInterface", "There is no interface " + interface});
    }
    if (message.member() == QLatin1String("GetAll") && message.signature() == QLatin1String("s")) {
        return QVariantList{properties()};
    }
    if (message.member() == QLatin1String("Set")) {
        return std::unexpected(
            Error{"org.freedesktop.DBus.Error.PropertyReadOnly", "The properties are read only"});
    }
    if (message.member() != QLatin1String("Get") || message.signature() != QLatin1String("ss")) {
        return unknownMethod(message);
    }
    const auto name = message.arguments().at(1).toString();
    const auto value = properties().value(name);
    if (!value.isValid()) {
        return std::unexpected(
            Error{"org.freedesktop.DBus.Error.UnknownProperty", "There is no property " + name});
    }
    return QVariantList{QVariant::fromValue(QDBusVariant(value))};
}

std::unexpected<BusObject::Error> BusObject::unknownMethod(const QDBusMessage& message) {
    return std::unexpected(
        Error{"org.freedesktop.DBus.Error.UnknownMethod",
              "There is no method " + message.member() + " with arguments (" + message.signature() + ")"});
}

std::unexpected<BusObject::Error> BusObject::invalidArguments(const QString& reason) {
    return std::unexpected(Error{"org.freedesktop.DBus.Error.InvalidArgs", reason});
}

} // namespace cindertop::ui
