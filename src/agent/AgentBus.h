#pragma once

#include "agent/BusMethods.h"
#include "ui/tray/BusObject.h"

#include <QDBusConnection>
#include <QProperty>
#include <QTimer>
#include <QVariantMap>

namespace cindertop::agent {

inline constexpr const char* busName = "app.cindertop.Agent";
inline constexpr const char* busPath = "/app/cindertop/Agent";

/// Puts the running program on the session bus: see docs/bus.md. Main thread.
class AgentBus final : public ui::BusObject {
public:
    enum class Claim {
        done,    ///< the program answers under the name
        taken,   ///< another one does
        refused, ///< there is no bus, or it does not let us
    };

    /// `state` must outlive this.
    AgentBus(const QDBusConnection& connection, AppState& state, BusActions actions);
    ~AgentBus() override;

    /// Takes the name on the bus.
    Claim claimName();

    /// The connection was lost, or replaced by another, on which the program appears.
    Claim useBus(const QDBusConnection& connection);

    /// Announces what has changed since the last time; commands and changes made elsewhere are announced
    /// without it.
    void publishChanges();
    /// The same, and that there is a new snapshot.
    void publishTick();

    QString introspect(const QString& path) const override;
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

protected:
    QVariantMap properties() const override;
    QVariant propertyValue(const QString& name) const override;
    Answer call(const QDBusMessage& message) override;

private:
    void leaveBus();
    void publishLater();
    void publish(const QVariantMap& changed);
    QVariantMap takeChanges();

    BusMethods methods_;
    QVariantMap published_;                ///< the properties as last announced, without the snapshot
    mutable bool isSnapshotKnown_ = false; ///< a client has read the snapshot since it was invalidated
    QTimer publishing_;                    ///< soon
    QPropertyNotifier pausedNotifier_;
    QPropertyNotifier termsNotifier_;
    QPropertyNotifier notificationNotifier_;
};

} // namespace cindertop::agent
