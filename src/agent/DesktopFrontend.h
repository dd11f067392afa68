#pragma once

#include "agent/Arguments.h"
#include "app/AppState.h"
#include "app/EventLoopTimers.h"
#include "platform/qt/PortalSavePanel.h"
#include "ui/theme/Appearance.h"
#include "ui/theme/DesktopAppearance.h"
#include "ui/tray/StatusItemController.h"
#include "ui/tray/StatusMenu.h"
#include "ui/tray/StatusNotifierItem.h"
#include "ui/windows/Pages.h"
#include "ui/windows/ProgramDesktop.h"
#include "ui/windows/ProgramWindows.h"
#include "update/FeedUpdateService.h"

#include <QDBusConnection>
#include <QPropertyNotifier>
#include <QString>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace cindertop::agent {

/// The program on a display: its place in the panel and its windows. Needs a QGuiApplication; main thread.
class DesktopFrontend {
public:
    /// `say` receives a sentence for the user.
    using Speaker = std::function<void(const QString& sentence)>;
    /// True: the program is about to restart with this window, because the library of the windows is that of
    /// another build.
    using Restarter = std::function<bool(Opening opening, const QString& libraryBuild)>;

    /// `isDark` overrules the desktop's preference.
    DesktopFrontend(std::optional<bool> isDark, QDBusConnection bus, Speaker say, Restarter startAnew);
    DesktopFrontend(const DesktopFrontend&) = delete;
    DesktopFrontend& operator=(const DesktopFrontend&) = delete;

    /// Adds the desktop, its pages and the look for updates to what an AppState is made from.
    AppStateEnvironment completed(AppStateEnvironment environment);

    /// Shows the item in the panel, and what the program opens with: before the terms are accepted the
    /// onboarding, and where no panel shows the item the overview, unless it is to stay in the background.
    /// The state must outlive this, or `end` be called before.
    void start(AppState& state, Opening opening, bool isBackground);
    void end();

    /// The connection was replaced or lost. Only after `start`.
    void useBus(const QDBusConnection& bus);

    /// Opens the settings, before the terms are accepted the onboarding, and where no panel shows the item
    /// the overview. Only after `start`.
    void openMainWindow();

private:
    ui::ProgramActions actions();
    ui::StatusMenu::Actions menuActions();
    void placeItem();
    void open(Opening opening);
    void openPopover();
    void openPage(ui::Page page);
    void tell(const std::string& title, const std::string& sentence);
    void presentUpdate(const UpdateResult& result);
    void notify(UserNotificationRequest notice);
    bool hasHost() const;
    void hostIsKnown();

    QDBusConnection bus_;
    Speaker say_;
    EventLoopTimers timers_; ///< of real time
    ui::Appearance appearance_;
    ui::DesktopAppearance desktopAppearance_;
    ui::ProgramWindows windows_;
    desktop::PortalSavePanel savePanel_;
    ui::ProgramDesktop desktop_;
    std::optional<ui::Pages> pages_;                  ///< from `completed` on
    std::unique_ptr<FeedUpdateService> updates_;      ///< from `completed` on
    UserNotificationCenter* notifications_ = nullptr; ///< from `completed` on
    AppState* state_ = nullptr;
    bool opensByItself_ = false;
    bool isHostTold_ = false;
    std::unique_ptr<Timer> popoverWaits_; ///< until it is known whether a panel shows the item
    QPropertyNotifier termsNotifier_;
    std::unique_ptr<ui::StatusNotifierItem> item_;
    std::unique_ptr<ui::StatusMenu> menu_;
    std::unique_ptr<ui::StatusItemController> controller_;
};

} // namespace cindertop::agent
