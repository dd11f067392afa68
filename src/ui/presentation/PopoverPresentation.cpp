#include "ui/presentation/PopoverPresentation.h"

#include "ui/presentation/MenuTexts.h"
#include "ui/presentation/QtText.h"

#include <QStringList>
#include <utility>

namespace cindertop::ui {

PopoverPresentation::PopoverPresentation(AppState& state, ProgramActions actions)
    : state_(state), actions_(std::move(actions)), contents_(PopoverContents::of(state)) {
    observe();
}

QString PopoverPresentation::detailText() const {
    // Without an item in the panel there is no label that could tell the score.
    QStringList parts{isWindow_ ? contents_.scoreText : QString(), contents_.temperatureText,
                      contents_.trendLabel};
    parts.removeAll(QString());
    return parts.join(" · ");
}

QString PopoverPresentation::settingsTitle() const {
    return qtText(settingsMenuTitle.in(state_.environment().machine.operatingSystem));
}

void PopoverPresentation::setHasCompositor(bool hasCompositor) {
    if (std::exchange(hasCompositor_, hasCompositor) != hasCompositor) {
        Q_EMIT hasCompositorChanged();
    }
}

void PopoverPresentation::setIsWindow(bool isWindow) {
    if (std::exchange(isWindow_, isWindow) != isWindow) {
        Q_EMIT surroundingsChanged();
        Q_EMIT changed();
    }
}

QString PopoverPresentation::note() const {
    return isWindow_ && !hasStatusItem_
               ? "This desktop's panel shows no status items. Monitoring goes on when you close this window; "
                 "start Cindertop again to come back to it."
               : QString();
}

void PopoverPresentation::setHasStatusItem(bool hasItem) {
    if (std::exchange(hasStatusItem_, hasItem) != hasItem) {
        Q_EMIT surroundingsChanged();
    }
}

void PopoverPresentation::toggleMonitoring() {
    if (state_.isMonitoringPermitted()) {
        state_.setPaused(!*state_.published().isPaused);
        return;
    }
    state_.showOnboardingWindow();
    actions_.closePopover();
}

void PopoverPresentation::checkForUpdates() {
    state_.checkForUpdates();
}

void PopoverPresentation::openHelp() const {
    actions_.openHelp();
    actions_.closePopover();
}

void PopoverPresentation::openPreferences() {
    state_.showSettingsWindow();
    actions_.closePopover();
}

void PopoverPresentation::quit() const {
    actions_.quit();
}

void PopoverPresentation::close() const {
    actions_.closePopover();
}

void PopoverPresentation::observe() {
    const auto& published = state_.published();
    const auto updates = [this] { update(); };
    observations_.push_back(published.legalTermsAccepted.bindable().addNotifier(updates));
    observations_.push_back(published.thermalSnapshot.bindable().addNotifier(updates));
    observations_.push_back(published.isPaused.bindable().addNotifier(updates));
    observations_.push_back(published.settings.bindable().addNotifier(updates));
    observations_.push_back(published.recommendationSnapshot.bindable().addNotifier(updates));
    observations_.push_back(published.processOffenderSnapshot.bindable().addNotifier(updates));
    observations_.push_back(published.systemContextSnapshot.bindable().addNotifier(updates));
}

void PopoverPresentation::update() {
    auto contents = PopoverContents::of(state_);
    if (contents_ != contents) {
        contents_ = std::move(contents);
        Q_EMIT changed();
    }
}

} // namespace cindertop::ui
