#pragma once

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QString>
#include <QVariantMap>

namespace cindertop::desktop {

inline constexpr auto portalService = "org.freedesktop.portal.Desktop";

/// One question to the user that a portal asks, from before the call until it answers or ends. Main thread.
class PortalRequest : public QObject {
    Q_OBJECT

public:
    static constexpr uint succeeded = 0;
    static constexpr uint ended = 2; ///< otherwise than by the user

    /// `token` makes the request's name unique among those of this connection.
    PortalRequest(QDBusConnection bus, const QString& token);
    /// Takes the question off the screen unless it was answered.
    ~PortalRequest() override;

    /// Portals older than the tokens choose another name.
    void listenAt(const QString& path);

Q_SIGNALS:
    /// Once at most.
    void answered(uint response, const QVariantMap& results);

private:
    Q_SLOT void take(uint response, const QVariantMap& results);

    QDBusConnection bus_;
    QDBusServiceWatcher portal_;
    QString path_;
    bool isAnswered_ = false;
};

} // namespace cindertop::desktop
