#pragma once

#include "platform/Timers.h"
#include "platform/UserDefaults.h"
#include "platform/UserNotificationCenter.h"
#include "platform/qt/BusCalls.h"
#include "platform/qt/NotificationSwitch.h"

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <deque>
#include <expected>
#include <functional>
#include <map>
#include <optional>
#include <string>

namespace cindertop::desktop {

/// The notification server of a Linux desktop, which may start late, die, come back or hang: org.freedesktop.
/// Notifications on the session bus. Main thread; nothing here waits, and whatever the server does, each
/// completion runs within a few times `BusCalls::timeLimit`, never within the call.
///
/// These desktops never ask their user for permission. So the status is `notDetermined` until permission has
/// been requested once, which `UserDefaults` remembers; from then on it is `authorized`, unless the user has
/// switched the program's notifications off in the desktop's settings (`denied`). Without a server, or one
/// that the bus can start, it is `unknown`. The settings are consulted at each read.
class FreedesktopNotificationCenter final : public UserNotificationCenter {
public:
    /// `bus` need not be connected. `timers` and `defaults` must outlive this.
    FreedesktopNotificationCenter(QDBusConnection bus, Timers& timers, UserDefaults& defaults,
                                  NotificationSwitch isSwitchedOff);

    /// The connection was replaced or lost.
    void useBus(const QDBusConnection& bus);

    /// Called when another server runs, or none any more: what the status was need not hold.
    void observeServer(std::function<void()> observer) { serverObserver_ = std::move(observer); }

    /// Never asked: the servers do not know who is in front, and show every notification.
    void setDelegate(const UserNotificationCenterDelegate* /*delegate*/) override {}

    void readAuthorizationStatus(StatusCompletion completion) override;
    void requestAuthorization(NotificationAuthorizationOptions options,
                              PermissionCompletion completion) override;

    /// Takes the place of the notification last shown of the same thread, for as long as the same server
    /// runs. Badges are ignored; a request with a delay is turned down.
    void add(UserNotificationRequest request, AddCompletion completion) override;

private:
    using AddResult = std::expected<void, NotificationError>;

    struct Posting {
        UserNotificationRequest request;
        AddCompletion completion;
    };

    /// What is known of the server that runs now. Another one knows nothing of these notifications.
    struct Server {
        std::optional<bool> showsMarkup;   ///< in bodies; absent: not asked yet
        std::map<std::string, uint> shown; ///< its numbers of the notifications, by thread
    };

    /// Whether a server runs, or would be started by a call.
    void findServer(std::function<void(bool)> completion);
    void findStartableServer(std::function<void(bool)> completion);
    NotificationAuthorizationStatus statusWithServer() const;

    void forgetServer();
    void beginPosting();
    void takeCapabilities(const BusCalls::Result& result);
    void notify();
    void takeNumber(const BusCalls::Result& result);
    void endPosting(const AddResult& result);

    UserDefaults& defaults_;
    NotificationSwitch isSwitchedOff_;
    QDBusServiceWatcher owner_;
    Server server_;
    std::function<void()> serverObserver_;
    std::deque<Posting> postings_; ///< the first is under way: the next one may have to take its place
    BusCalls calls_;
};

} // namespace cindertop::desktop
