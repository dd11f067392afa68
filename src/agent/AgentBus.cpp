#include "agent/AgentBus.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusVariant>
#include <utility>

namespace cindertop::agent {

namespace {

constexpr QLatin1String agentInterface{"app.cindertop.Agent"};
constexpr QLatin1String propertiesInterface{"org.freedesktop.DBus.Properties"};
constexpr QLatin1String snapshotProperty{"Snapshot"};

void send(const QDBusConnection& connection, const QDBusMessage& message) {
    // Without a caller or a bus no answer is needed.
    [[maybe_unused]] const bool isSent = connection.send(message);
}

void reply(const QDBusConnection& connection, const QDBusMessage& question, const QDBusMessage& answer) {
    if (question.isReplyRequired()) {
        send(connection, answer);
    }
}

} // namespace

AgentBus::AgentBus(QDBusConnection connection, AppState& state, BusActions actions)
    : connection_(std::move(connection)),
      methods_(state, std::move(actions)),
      published_(methods_.properties()) {
    publishing_.setSingleShot(true);
    connect(&publishing_, &QTimer::timeout, this, &AgentBus::publishChanges);
    const auto& published = state.published();
    pausedNotifier_ = published.isPaused.bindable().addNotifier([this] { publishLater(); });
    termsNotifier_ = published.legalTermsAccepted.bindable().addNotifier([this] { publishLater(); });
    notificationNotifier_ =
        published.systemNotificationState.bindable().addNotifier([this] { publishLater(); });
}

AgentBus::~AgentBus() {
    disappear();
}

void AgentBus::disappear() {
    if (!connection_.isConnected()) {
        return; // Qt would ask a bus that is not there
    }
    connection_.unregisterObject(busPath);
    connection_.unregisterService(busName);
}

AgentBus::Claim AgentBus::useBus(const QDBusConnection& connection) {
    disappear();
    connection_ = connection;
    isSnapshotKnown_ = false;
    return claimName();
}

AgentBus::Claim AgentBus::claimName() {
    if (!connection_.isConnected() || !connection_.registerVirtualObject(busPath, this)) {
        return Claim::refused;
    }
    const auto reply = connection_.interface()->registerService(
        busName, QDBusConnectionInterface::DontQueueService, QDBusConnectionInterface::DontAllowReplacement);
    if (!reply.isValid()) {
        return Claim::refused;
    }
    return reply.value() == QDBusConnectionInterface::ServiceRegistered ? Claim::done : Claim::taken;
}

/// Other changes of the same cause are announced with it.
void AgentBus::publishLater() {
    publishing_.start();
}

QVariantMap AgentBus::takeChanges() {
    auto current = methods_.properties();
    QVariantMap changed;
    for (auto entry = current.cbegin(); entry != current.cend(); ++entry) {
        if (published_.value(entry.key()) != entry.value()) {
            changed.insert(entry.key(), entry.value());
        }
    }
    published_ = std::move(current);
    return changed;
}

void AgentBus::publishChanges() {
    if (const auto changed = takeChanges(); !changed.isEmpty()) {
        publish(changed);
    }
}

void AgentBus::publishTick() {
    const auto changed = takeChanges();
    if (!changed.isEmpty() || isSnapshotKnown_) {
        publish(changed);
    }
}

/// The snapshot changes with everything else. It is invalidated once; not again until a client has read it,
/// so that a program at rest sends nothing.
void AgentBus::publish(const QVariantMap& changed) {
    const auto invalidated = isSnapshotKnown_ ? QStringList{snapshotProperty} : QStringList{};
    isSnapshotKnown_ = false;
    auto signal = QDBusMessage::createSignal(busPath, propertiesInterface, "PropertiesChanged");
    signal << QString(agentInterface) << changed << invalidated;
    send(connection_, signal);
}

QString AgentBus::introspect(const QString& path) const {
    return path == QLatin1String(busPath) ? BusMethods::introspection() : QString();
}

bool AgentBus::handleMessage(const QDBusMessage& message, const QDBusConnection& connection) {
    if (message.interface() == propertiesInterface) {
        answerProperties(message, connection);
        return true;
    }
    const bool isOurs = message.interface().isEmpty() || message.interface() == agentInterface;
    if (!isOurs) {
        return false;
    }
    const auto answerWith = [connection, message](const BusAnswer& answer) {
        reply(connection, message,
              answer ? message.createReply(*answer)
                     : message.createErrorReply(answer.error().name, answer.error().message));
    };
    if (methods_.startCall(message.member(), message.signature(), answerWith)) {
        return true;
    }
    answerWith(methods_.call(message.member(), message.signature(), message.arguments()));
    publishChanges();
    return true;
}

void AgentBus::answerProperties(const QDBusMessage& message, const QDBusConnection& connection) {
    const auto refuse = [&](const char* error, const QString& text) {
        reply(connection, message, message.createErrorReply(error, text));
    };
    const auto interface = message.arguments().value(0).toString();
    if (!interface.isEmpty() && interface != agentInterface) {
        refuse("org.freedesktop.DBus.Error.UnknownInterface", "There is no interface " + interface);
    } else if (message.member() == QLatin1String("GetAll") && message.signature() == QLatin1String("s")) {
        auto properties = methods_.properties();
        properties.insert(snapshotProperty, methods_.snapshot());
        isSnapshotKnown_ = true;
        reply(connection, message, message.createReply(QVariant(properties)));
    } else if (message.member() == QLatin1String("Get") && message.signature() == QLatin1String("ss")) {
        answerGet(message, connection);
    } else if (message.member() == QLatin1String("Set")) {
        refuse("org.freedesktop.DBus.Error.PropertyReadOnly",
               "Properties are read only; call Set of the agent");
    } else {
        refuse("org.freedesktop.DBus.Error.UnknownMethod", "There is no such method of properties");
    }
}

void AgentBus::answerGet(const QDBusMessage& message, const QDBusConnection& connection) {
    const auto name = message.arguments().at(1).toString();
    auto value = methods_.properties().value(name);
    if (name == snapshotProperty) {
        value = methods_.snapshot();
        isSnapshotKnown_ = true;
    }
    reply(connection, message,
          value.isValid() ? message.createReply(QVariant::fromValue(QDBusVariant(value)))
                          : message.createErrorReply("org.freedesktop.DBus.Error.UnknownProperty",
                                                     "There is no property " + name));
}

} // namespace cindertop::agent
