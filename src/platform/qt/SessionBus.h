#pragma once

#include "platform/Timers.h"

#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <chrono>
#include <functional>
#include <memory>

namespace cindertop::desktop {

/// Where this session's bus is or will be: DBUS_SESSION_BUS_ADDRESS, else the socket "bus" in
/// XDG_RUNTIME_DIR; empty where neither is set. An address that would start a bus counts as none.
QString sessionBusAddress();

/// The connection to this session's bus. A bus that starts after the program is found within `retryInterval`,
/// and one that is lost, when it is there again. Main thread.
class SessionBus final : public QObject {
    Q_OBJECT

public:
    /// Told each new connection, and one that is not connected when the bus is lost. Never within a call.
    using Observer = std::function<void(const QDBusConnection& bus)>;

    static constexpr std::chrono::seconds retryInterval{3};

    /// Tries once before it returns. Without an address there is no bus and never will be. `timers` must
    /// outlive this.
    explicit SessionBus(Timers& timers, QString address = sessionBusAddress());
    ~SessionBus() override;

    /// Need not be connected.
    const QDBusConnection& connection() const { return connection_; }

    void observe(Observer observer) { observer_ = std::move(observer); }

private:
    Q_SLOT void noticeLoss();
    void connectToBus();
    void retry();
    void tryAgainLater();
    void drop();

    Timers& timers_;
    QString address_;
    QString name_; ///< of the connection within this program; empty without one
    QDBusConnection connection_;
    Observer observer_;
    std::unique_ptr<Timer> waiting_; ///< for the next try, or to tell the observer
};

} // namespace cindertop::desktop
