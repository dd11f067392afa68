#include "agent/DesktopFace.h"

#include "app/Version.h"
#include "platform/desktop/SavePlace.h"
#include "update/UpdateNotice.h"

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
      savePanel_(bus_, timers_,
                 [this](const SavePanel& panel, const Desktop::SaveCompletion& completion) {
                     saveWithoutPanel(panel, completion);
                 }),
      desktop_(windows_, [this](const SavePanel& panel, Desktop::SaveCompletion completion) {
          savePanel_.choose(panel, std::move(completion));
      }) {}

AppStateEnvironment DesktopFace::completed(AppStateEnvironment environment) {
    environment.desktop = &desktop_;
    environment.windows = &windows_;
    pages_.emplace(environment.deployment, QCoreApplication::applicationDirPath().toStdString());
    environment.releasesPage = pages_->address(ui::Page::releases).value_or("");
    updates_ = std::make_unique<FeedUpdateService>(
        environment.deployment, ReleaseVersion::parse(version).value_or(ReleaseVersion()), timers_,
        [this](const UpdateResult& result) { presentUpdate(result); });
    environment.updates = updates_.get();
    return environment;
}

void DesktopFace::start(AppState& state, Opening opening, bool isBackground) {
    state_ = &state;
    windows_.present(state, actions(), [this] { controller_->popoverDidClose(); });
    item_ = std::make_unique<ui::StatusNotifierItem>(bus_);
    menu_ = std::make_unique<ui::StatusMenu>(bus_, state, menuActions());
    controller_ = std::make_unique<ui::StatusItemController>(state, *item_, windows_.popover(), timers_);
    if (!state.isMonitoringPermitted()) {
        opening = Opening::onboarding;
    }
    open(opening);
    const bool opensWindow = opening == Opening::none && !isBackground;
    item_->watcher().observeHost([this, opensWindow] { tellWithoutHost(opensWindow); });
    tellWithoutHost(opensWindow);
}

void DesktopFace::end() {
    windows_.closeAll();
    controller_.reset();
    menu_.reset();
    item_.reset();
}

ui::ProgramActions DesktopFace::actions() {
    return {.openHelp = [this] { openPage(ui::Page::help); },
            .openTerms = [this] { openPage(ui::Page::terms); },
            .openPrivacyPolicy = [this] { openPage(ui::Page::privacy); },
            .openWebsite = [this] { openPage(ui::Page::website); },
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
        state_->showMainWindow();
        return;
    case Opening::onboarding:
        state_->showOnboardingWindow();
        return;
    }
}

void DesktopFace::openPage(ui::Page page) {
    if (const auto address = pages_->address(page)) {
        desktop_.openPage(*address);
    } else {
        say_("the page is not installed");
    }
}

void DesktopFace::saveWithoutPanel(const SavePanel& panel, const Desktop::SaveCompletion& completion) {
    const auto place = desktop::freeSavePlace(panel.proposedFileName);
    notify({.identifier = "cindertop.saved",
            .content = {.title = panel.title,
                        .body = "This desktop has no save panel. The file is " + place.string() + ".",
                        .threadIdentifier = "cindertop.saved",
                        .categoryIdentifier = "saved",
                        .sound = std::nullopt,
                        .badge = std::nullopt},
            .delay = std::nullopt});
    completion(place);
}

/// The user has just asked: what is new opens at once.
void DesktopFace::presentUpdate(const UpdateResult& result) {
    notify(updateNotice(result));
    if (const auto* const release = std::get_if<Release>(&result)) {
        desktop_.openPage(release->page);
    }
}

void DesktopFace::notify(UserNotificationRequest notice) {
    const auto sentence = QString::fromStdString(notice.content.title + ": " + notice.content.body);
    state_->environment().notificationCenter.add(std::move(notice),
                                                 [say = say_, sentence](const auto& result) {
                                                     if (!result) {
                                                         say(sentence);
                                                     }
                                                 });
}

/// Without a panel that shows status items the settings are the way in. It is told once; a panel that ends
/// later comes back.
void DesktopFace::tellWithoutHost(bool opensWindow) {
    if (!item_->watcher().isSettled() || std::exchange(isHostTold_, true) || item_->watcher().hasHost()) {
        return;
    }
    say_("this desktop shows no status items; start cindertop again to open its window");
    if (opensWindow) {
        open(Opening::settings);
    }
}

} // namespace cindertop::agent
