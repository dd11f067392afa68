#include "agent/DesktopFace.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>
#include <utility>

namespace cindertop::agent {

DesktopFace::DesktopFace(std::optional<bool> isDark, QDBusConnection bus, Speaker say)
    : bus_(std::move(bus)),
      say_(std::move(say)),
      desktopAppearance_(appearance_, bus_, isDark),
      windows_(appearance_, say_),
      desktop_(windows_, [](const SavePanel& /*panel*/, const Desktop::SaveCompletion& completion) {
          completion(std::nullopt);
      }) {}

AppStateEnvironment DesktopFace::completed(AppStateEnvironment environment) {
    environment.desktop = &desktop_;
    environment.windows = &windows_;
    return environment;
}

void DesktopFace::start(AppState& state, Opening opening) {
    state_ = &state;
    windows_.present(state, actions(), [this] { controller_->popoverDidClose(); });
    item_ = std::make_unique<ui::StatusNotifierItem>(bus_);
    menu_ = std::make_unique<ui::StatusMenu>(bus_, state, menuActions());
    controller_ = std::make_unique<ui::StatusItemController>(state, *item_, windows_.popover());
    item_->watcher().observeHost([this] { tellWithoutHost(); });
    if (!state.isMonitoringPermitted() && opening == Opening::none) {
        opening = Opening::onboarding;
    }
    open(opening);
}

void DesktopFace::end() {
    windows_.closeAll();
    controller_.reset();
    menu_.reset();
    item_.reset();
}

ui::ProgramActions DesktopFace::actions() {
    return {.openHelp = [] {},
            .openTerms = [] {},
            .openPrivacyPolicy = [] {},
            .openWebsite = [] {},
            .closePopover = [this] { windows_.popover().close(); },
            .quit = [] { QCoreApplication::quit(); }};
}

ui::StatusMenu::Actions DesktopFace::menuActions() {
    return {.open = [this] { open(Opening::popover); },
            .toggleMonitoring = [this] { state_->setPaused(!*state_->published().isPaused); },
            .checkForUpdates = [this] { state_->checkForUpdates(); },
            .openHelp = actions().openHelp,
            .openPreferences = [this] { state_->showSettingsWindow(); },
            .quit = actions().quit};
}

void DesktopFace::open(Opening opening) {
    switch (opening) {
    case Opening::none:
        return;
    case Opening::popover:
        // Nobody has clicked: the pointer is where the user looks.
        windows_.popover().show(QCursor::pos());
        return;
    case Opening::settings:
        state_->showSettingsWindow();
        return;
    case Opening::onboarding:
        state_->showOnboardingWindow();
        return;
    }
}

/// Without a panel that shows status items the settings are the way in.
void DesktopFace::tellWithoutHost() {
    if (item_->watcher().isSettled() && !item_->watcher().hasHost()) {
        say_("this desktop shows no status items; start cindertop again to open its window");
    }
}

} // namespace cindertop::agent
