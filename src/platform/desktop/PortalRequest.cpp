#include "platform/desktop/PortalRequest.h"

#include <QDBusMessage>
#include <utility>

namespace cindertop::desktop {

namespace {

constexpr auto requestInterface = "org.freedesktop.portal.Request";

QString requestPath(const QDBusConnection& bus, const QString& token) {
    auto sender = bus.baseService();
    sender.remove(0, 1).replace('.', '_');
    return "/org/freedesktop/portal/desktop/request/" + sender + '/' + token;
}

} // namespace

PortalRequest::PortalRequest(QDBusConnection bus, const QString& token)
    : bus_(std::move(bus)), portal_(portalService, bus_, QDBusServiceWatcher::WatchForUnregistration) {
    connect(&portal_, &QDBusServiceWatcher::serviceUnregistered, this, [this] { take(ended, {}); });
    listenAt(requestPath(bus_, token));
}

PortalRequest::~PortalRequest() {
    if (!isAnswered_) {
        auto close = QDBusMessage::createMethodCall(portalService, path_, requestInterface, "Close");
        close.setAutoStartService(false);
        bus_.send(close);
    }
}

void PortalRequest::listenAt(const QString& path) {
    if (path == path_) {
        return;
    }
    const auto* const slot = SLOT(take(uint, QVariantMap));
    if (!path_.isEmpty()) {
        bus_.disconnect(portalService, path_, requestInterface, "Response", this, slot);
    }
    path_ = path;
    bus_.connect(portalService, path_, requestInterface, "Response", this, slot);
}

void PortalRequest::take(uint response, const QVariantMap& results) {
    if (!std::exchange(isAnswered_, true)) {
        Q_EMIT answered(response, results);
    }
}

} // namespace cindertop::desktop
