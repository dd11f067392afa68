#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QString>
#include <functional>

namespace cindertop::ui {

/// Announces a status item to the desktop's list of them whenever there is one: it may start after the
/// program, die and come back. Main thread.
class TrayWatcher : public QObject {
    Q_OBJECT

public:
    using HostObserver = std::function<void()>;

    /// `itemService` is the name under which the item is found on the bus.
    TrayWatcher(QDBusConnection connection, QString itemService);

    /// Whether some panel shows status items; unknown counts as no.
    bool hasHost() const { return hasHost_; }

    /// Whether the desktop has answered, so that `hasHost` is more than a guess. Without a bus it is so at
    /// once.
    bool isSettled() const { return isSettled_; }

    /// Calls `observer` after each change of `hasHost`, and with the first answer.
    void observeHost(HostObserver observer) { hostObserver_ = std::move(observer); }

private:
    Q_SLOT void askForHost();
    void askForWatcher();
    /// `owner` is the watcher's address on the bus; empty: there is none.
    void watcherIs(const QString& owner);
    void registerItem();
    void settle(bool hasHost);
    /// Calls `use` with the answer, unless there is another watcher by then.
    void ask(const QDBusMessage& question, std::function<void(const QDBusMessage& answer)> use);

    QDBusConnection connection_;
    QString itemService_;
    QDBusServiceWatcher serviceWatcher_;
    QString owner_;
    bool hasHost_ = false;
    bool isSettled_ = false;
    HostObserver hostObserver_;
};

} // namespace cindertop::ui
