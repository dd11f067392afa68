#pragma once

#include "platform/Desktop.h"
#include "platform/Timers.h"
#include "platform/desktop/BusCalls.h"

#include <QDBusConnection>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>

namespace cindertop::desktop {

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

    /// There is another connection, or none any more: open panels end without a place.
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
    BusCalls calls_;
};

} // namespace cindertop::desktop
