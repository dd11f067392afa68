#include "agent/DesktopFrontend.h"

#include "app/Version.h"
#include "platform/qt/PortalSavePanel.h"
#include "update/UpdateResult.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>
#include <chrono>
#include <utility>

namespace cindertop::agent {

namespace {

/// Panels answer at once; one that hangs must not keep the user from the window.
constexpr std::chrono::seconds longestWaitForPanel{2};

Opening openingOf(ui::WindowKind window) {
    switch (window) {
    case ui::WindowKind::onboarding:
        return Opening::onboarding;
    case ui::WindowKind::settings:
        return Opening::settings;
    case ui::WindowKind::popover:
    case ui::WindowKind::overview:
        break;
    }
    return Opening::popover;
}

} // namespace

DesktopFrontend::DesktopFrontend(std::optional<bool> isDark, QDBusConnection bus, Speaker say,
                                 Restarter startAnew)
    : bus_(std::move(bus)),
      say_(std::move(say)),
      desktopAppearance_(appearance_, bus_, isDark),
      windows_(appearance_,
               {.say = say_,
                .startAnew =
                    [startAnew = std::move(startAnew)](ui::WindowKind asked, const QString& libraryBuild) {
                        return startAnew(openingOf(asked), libraryBuild);
                    }}),
      savePanel_(bus_, timers_,
                 [](const SavePanel& panel, const Desktop::SaveCompletion& completion) {
                     completion(
                         {.place = desktop::freeSavePlace(panel.proposedFileName), .isChosenByUser = false});
                 }),
      desktop_(
          windows_,
          [this](const SavePanel& panel, Desktop::SaveCompletion completion) {
              savePanel_.choose(panel, std::move(completion));
          },
          [this](const std::string& title, const std::string& sentence) { tell(title, sentence); }) {}

AppStateEnvironment DesktopFrontend::completed(AppStateEnvironment environment) {
    notifications_ = &environment.notificationCenter;
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

void DesktopFrontend::start(AppState& state, Opening opening, bool isBackground) {
    state_ = &state;
    windows_.present(state, actions(), [this] { controller_->popoverDidClose(); });
    if (!state.isMonitoringPermitted()) {
        opening = Opening::onboarding;
    }
    opensByItself_ = opening == Opening::none && !isBackground;
    termsNotifier_ = state.published().legalTermsAccepted.bindable().addNotifier([this] {
        // The first run goes on in a window that stays.
        if (state_->isMonitoringPermitted() && windows_.isOnboardingShown() && !hasHost()) {
            windows_.showOverview();
        }
    });
    placeItem();
    open(opening);
}

void DesktopFrontend::placeItem() {
    controller_.reset();
    menu_.reset();
    item_.reset();
    item_ = std::make_unique<ui::StatusNotifierItem>(bus_);
    menu_ = std::make_unique<ui::StatusMenu>(bus_, *state_, menuActions());
    controller_ = std::make_unique<ui::StatusItemController>(*state_, *item_, windows_.popover(), timers_);
    item_->watcher().observeHost([this] { hostIsKnown(); });
    if (item_->watcher().isSettled()) {
        hostIsKnown();
    }
}

void DesktopFrontend::useBus(const QDBusConnection& bus) {
    bus_ = bus;
    desktopAppearance_.useBus(bus_);
    savePanel_.useBus(bus_);
    placeItem();
}

void DesktopFrontend::end() {
    termsNotifier_ = {};
    popoverWaits_.reset();
    windows_.closeAll();
    controller_.reset();
    menu_.reset();
    item_.reset();
}

ui::ProgramActions DesktopFrontend::actions() {
    return {.openHelp = [this] { openPage(ui::Page::help); },
            .openTerms = [this] { openPage(ui::Page::terms); },
            .openPrivacyPolicy = [this] { openPage(ui::Page::privacy); },
            .openWebsite = [this] { openPage(ui::Page::website); },
            .closePopover = [this] { windows_.popover().close(); },
            .quit = [] { QCoreApplication::quit(); },
            .canEnterTaskBar = ui::TaskBarEntry::isPossible()};
}

ui::StatusMenu::Actions DesktopFrontend::menuActions() {
    return {.open = [this] { open(Opening::popover); },
            .toggleMonitoring =
                [this] {
                    if (state_->isMonitoringPermitted()) {
                        state_->setPaused(!*state_->published().isPaused);
                    } else {
                        state_->showOnboardingWindow();
                    }
                },
            .checkForUpdates = [this] { state_->checkForUpdates(); },
            .openHelp = actions().openHelp,
            .openPreferences = [this] { state_->showSettingsWindow(); },
            .quit = actions().quit};
}

void DesktopFrontend::open(Opening opening) {
    switch (opening) {
    case Opening::none:
        return;
    case Opening::popover:
        if (item_->watcher().isSettled()) {
            openPopover();
        } else {
            popoverWaits_ = timers_.start(longestWaitForPanel, [this] { openPopover(); });
        }
        return;
    case Opening::settings:
        state_->showMainWindow();
        return;
    case Opening::onboarding:
        state_->showOnboardingWindow();
        return;
    }
}

void DesktopFrontend::openPopover() {
    popoverWaits_.reset();
    if (hasHost()) {
        // Nobody has clicked: the pointer is where the user looks.
        windows_.popover().show(QCursor::pos());
    } else {
        windows_.showOverview();
    }
}

void DesktopFrontend::openMainWindow() {
    if (state_->isMonitoringPermitted() && !hasHost()) {
        windows_.showOverview();
    } else {
        state_->showMainWindow();
    }
}

void DesktopFrontend::openPage(ui::Page page) {
    if (const auto address = pages_->address(page)) {
        desktop_.openPage(*address);
    } else {
        say_("the page is not installed");
    }
}

void DesktopFrontend::tell(const std::string& title, const std::string& sentence) {
    notify({.identifier = "cindertop.told",
            .content = {.title = title,
                        .body = sentence,
                        .threadIdentifier = "cindertop.told",
                        .categoryIdentifier = "told",
                        .sound = std::nullopt,
                        .badge = std::nullopt},
            .delay = std::nullopt});
}

/// The user has just asked: what is new opens at once.
void DesktopFrontend::presentUpdate(const UpdateResult& result) {
    notify(updateNotice(result));
    if (const auto* const release = std::get_if<Release>(&result)) {
        desktop_.openPage(release->page);
    }
}

void DesktopFrontend::notify(UserNotificationRequest notice) {
    const auto sentence = QString::fromStdString(notice.content.title + ": " + notice.content.body);
    notifications_->add(std::move(notice), [say = say_, sentence](const auto& result) {
        if (!result) {
            say(sentence);
        }
    });
}

bool DesktopFrontend::hasHost() const {
    return item_->watcher().hasHost();
}

/// Without a panel that shows status items the overview is the way in. It is told once; a panel that ends
/// later comes back.
void DesktopFrontend::hostIsKnown() {
    windows_.setHasStatusItem(hasHost());
    if (popoverWaits_) {
        openPopover();
    }
    if (std::exchange(isHostTold_, true) || hasHost()) {
        return;
    }
    say_("this desktop shows no status items; start cindertop again to open its window");
    if (opensByItself_) {
        windows_.showOverview();
    }
}

} // namespace cindertop::agent
