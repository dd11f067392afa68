#pragma once

#include "platform/Desktop.h"
#include "platform/Timers.h"
#include "platform/qt/BusCalls.h"

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QString>
#include <QVariantMap>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <string>

namespace cindertop::desktop {

/// A place for a new file where no panel can be shown: the user's documents, else the home folder, under the
/// name given or, where that is taken, with a number before its extension.
std::filesystem::path freeSavePlace(const std::string& fileName);

/// The same in a given folder.
std::filesystem::path freeSavePlace(const std::filesystem::path& folder, const std::string& fileName);

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

class PortalRequest;

/// The desktop's own save panel, through org.freedesktop.portal.FileChooser on the session bus. Main thread;
/// nothing here waits.
class PortalSavePanel {
public:
    using Completion = Desktop::SaveCompletion;
    using Fallback = std::function<void(const SavePanel& panel, Completion completion)>;

    /// `bus` need not be connected, `timers` must outlive this. `otherwise` chooses where no portal shows a
    /// panel.
    PortalSavePanel(QDBusConnection bus, Timers& timers, Fallback otherwise);
    ~PortalSavePanel();

    /// The connection was replaced or lost: open panels end without a place.
    void useBus(const QDBusConnection& bus);

    /// Completes exactly once, never within the call, when the user has chosen or left, or the portal has
    /// ended; never once this object is gone.
    void choose(const SavePanel& panel, Completion completion);

private:
    struct Pending {
        SavePanel panel;
        Completion completion;
        std::unique_ptr<PortalRequest> request;
    };

    void takeHandle(std::uint64_t number, const BusCalls::Result& result);
    void finish(std::uint64_t number, const SaveChoice& choice);

    QDBusConnection bus_;
    Fallback otherwise_;
    std::uint64_t asked_ = 0;
    std::map<std::uint64_t, Pending> pending_; ///< by the order of asking
    /// Deleted with its connection, not later: without the application Qt's bus thread would never answer.
    std::unique_ptr<PortalRequest> finished_;
    BusCalls calls_;
};

} // namespace cindertop::desktop
