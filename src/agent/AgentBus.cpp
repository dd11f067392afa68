#include "agent/AgentBus.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <utility>

namespace cindertop::agent {

namespace {

constexpr QLatin1String snapshotProperty{"Snapshot"};

} // namespace

AgentBus::AgentBus(const QDBusConnection& connection, AppState& state, BusActions actions)
    : BusObject(connection, busPath, busName),
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
    leaveBus();
}

void AgentBus::leaveBus() {
    if (auto bus = connection(); bus.isConnected()) { // Qt would ask a bus that is not there
        bus.unregisterService(busName);
    }
}

AgentBus::Claim AgentBus::useBus(const QDBusConnection& connection) {
    leaveBus();
    moveTo(connection);
    isSnapshotKnown_ = false;
    return claimName();
}

AgentBus::Claim AgentBus::claimName() {
    if (!appear()) {
        return Claim::refused;
    }
    const auto reply = connection().interface()->registerService(
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
    sendChanges(changed, invalidated);
}

QString AgentBus::introspect(const QString& path) const {
    return path == QLatin1String(busPath) ? BusMethods::introspection() : QString();
}

bool AgentBus::handleMessage(const QDBusMessage& message, const QDBusConnection& connection) {
    if (!isCall(message)) {
        return BusObject::handleMessage(message, connection);
    }
    const auto answerLater = [connection, message](const Answer& answer) {
        reply(connection, message, answer);
    };
    if (!methods_.startCall(message.member(), message.signature(), answerLater)) {
        BusObject::handleMessage(message, connection);
        publishChanges();
    }
    return true;
}

ui::BusAnswer AgentBus::call(const QDBusMessage& message) {
    return methods_.call(message.member(), message.signature(), message.arguments());
}

QVariantMap AgentBus::properties() const {
    auto properties = methods_.properties();
    properties.insert(snapshotProperty, propertyValue(snapshotProperty));
    return properties;
}

QVariant AgentBus::propertyValue(const QString& name) const {
    if (name != snapshotProperty) {
        return methods_.properties().value(name);
    }
    isSnapshotKnown_ = true;
    return methods_.snapshot();
}

} // namespace cindertop::agent
