#include "platform/qt/BusCalls.h"

#include <QObject>
#include <utility>

namespace cindertop::desktop {

namespace {

BusCalls::Result resultOf(const QDBusMessage& reply) {
    if (reply.type() == QDBusMessage::ReplyMessage) {
        return reply.arguments();
    }
    return std::unexpected(reply.errorName().toStdString() + ": " + reply.errorMessage().toStdString());
}

} // namespace

void BusCalls::DeleteLater::operator()(QDBusPendingCallWatcher* watcher) const {
    watcher->disconnect();
    watcher->deleteLater();
}

BusCalls::BusCalls(QDBusConnection bus, Timers& timers) : bus_(std::move(bus)), timers_(timers) {}

void BusCalls::send(const QDBusMessage& call, Answer answer) {
    if (!bus_.isConnected()) { // Qt gives such calls no answer at all
        refuse("the bus is not connected", std::move(answer));
        return;
    }
    const auto number = ++sent_;
    Pending& pending = pending_[number];
    pending.answer = std::move(answer);
    pending.deadline =
        timers_.start(timeLimit, [this, number] { finish(number, std::unexpected("no answer in time")); });
    pending.watcher.reset(new QDBusPendingCallWatcher(bus_.asyncCall(call)));
    QObject::connect(
        pending.watcher.get(), &QDBusPendingCallWatcher::finished, pending.watcher.get(),
        [this, number](QDBusPendingCallWatcher* watcher) { finish(number, resultOf(watcher->reply())); });
}

void BusCalls::refuse(const std::string& reason, Answer answer) {
    const auto number = ++sent_;
    Pending& pending = pending_[number];
    pending.answer = std::move(answer);
    pending.deadline = timers_.start(std::chrono::seconds{0},
                                     [this, number, reason] { finish(number, std::unexpected(reason)); });
}

void BusCalls::finish(std::uint64_t call, const Result& result) {
    const auto finished = pending_.extract(call);
    finished.mapped().answer(result);
}

} // namespace cindertop::desktop
