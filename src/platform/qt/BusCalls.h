#pragma once

#include "platform/Timers.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QVariantList>
#include <chrono>
#include <cstdint>
#include <expected>
#include <functional>
#include <map>
#include <memory>
#include <string>

namespace cindertop::desktop {

/// Calls to other programs on a bus, any number at once. Main thread, whose event loop brings the answers.
///
/// Nothing here waits. Each call is answered exactly once, never within the call itself; after this object's
/// destruction none is. An answer may destroy this object.
class BusCalls {
public:
    /// The values that the other program returned, or what went wrong, for logs.
    using Result = std::expected<QVariantList, std::string>;
    using Answer = std::function<void(const Result&)>;

    /// A program that takes longer counts as hung. Desktops start a notification server within it.
    static constexpr std::chrono::seconds timeLimit{5};

    /// `timers` must outlive this. A bus that is not connected is an error of each call.
    BusCalls(QDBusConnection bus, Timers& timers);

    /// Further calls go there; those under way are answered as before.
    void useBus(const QDBusConnection& bus) { bus_ = bus; }

    void send(const QDBusMessage& call, Answer answer);

    /// Sends nothing; the answer is this error, as late as any.
    void refuse(const std::string& reason, Answer answer);

private:
    /// A watcher may be the sender of the very signal in which it is dropped.
    struct DeleteLater {
        void operator()(QDBusPendingCallWatcher* watcher) const;
    };

    struct Pending {
        Answer answer;
        std::unique_ptr<Timer> deadline;
        std::unique_ptr<QDBusPendingCallWatcher, DeleteLater> watcher;
    };

    void finish(std::uint64_t call, const Result& result);

    QDBusConnection bus_;
    Timers& timers_;
    std::uint64_t sent_ = 0;
    std::map<std::uint64_t, Pending> pending_; ///< by the order of sending
};

} // namespace cindertop::desktop
