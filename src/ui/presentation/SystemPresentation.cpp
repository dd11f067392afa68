#include "ui/presentation/SystemPresentation.h"

#include "persistence/AppSettingsStore.h"
#include "support/Wording.h"
#include "ui/presentation/QtText.h"

#include <algorithm>
#include <utility>

namespace cindertop::ui {

namespace {

constexpr Wording deniedWording{
    "Permission denied. Allow Cindertop notifications in System Settings > Notifications.",
    "Notifications are off for Cindertop. Allow them in your desktop's notification settings."};
constexpr Wording resetWording{"This will restore Cindertop preferences and Launch at Login to defaults.",
                               "This will restore Cindertop preferences and Start at Login to defaults."};
constexpr Wording exportedWording{"Export successful", "Exported to {name}"};

constexpr const char* symbolName(MenuBarInfoMode mode) {
    switch (mode) {
    case MenuBarInfoMode::none:
        return "flame";
    case MenuBarInfoMode::thermalStatus:
    case MenuBarInfoMode::thermalScore:
        return "speedometer";
    case MenuBarInfoMode::temperature:
        return "thermometer.medium";
    case MenuBarInfoMode::compactAlertOnly:
        return "bell.badge";
    }
    return "";
}

} // namespace

SystemPresentation::SystemPresentation(AppState& state, PresentConfirmation presentConfirmation)
    : state_(state), presentConfirmation_(std::move(presentConfirmation)) {
    const auto& published = state_.published();
    const auto observe = [this](const auto& property, auto emits) {
        observations_.emplace_back(property.bindable().addNotifier(emits));
    };
    const auto emitsModes = [this] { Q_EMIT modesChanged(); };
    const auto emits = [this] { Q_EMIT changed(); };
    observe(published.menuBarInfoMode, emitsModes);
    observe(published.experimentalTemperatureSensorsEnabled, emitsModes);
    observe(published.experimentalTemperatureSensorsEnabled, emits);
    observe(published.launchAtLoginEnabled, emits);
    observe(published.launchAtLoginStatusDescription, emits);
    observe(published.launchAtLoginFeedback, emits);
    observe(published.showDockIcon, emits);
    observe(published.notificationsEnabled, emits);
    observe(published.systemNotificationState, emits);
    observe(published.diagnosticLogsEnabled, emits);
    observe(published.diagnosticExportSucceeded, emits);
    observe(published.notificationMinimumLevel, emits);
    observe(published.recommendationVerbosity, emits);
    observe(published.showContextInsights, emits);
    observe(published.showProcessOffenders, emits);
    observe(published.historyEnabled, emits);
    observe(published.historyDurationMinutes, emits);
    observe(published.temperatureUnit, emits);
}

std::vector<MenuBarInfoMode> SystemPresentation::modes() const {
    return AppSettingsStore::availableMenuBarInfoModes(readsTemperatures());
}

QStringList SystemPresentation::modeLabels() const {
    QStringList labels;
    for (const auto mode : modes()) {
        labels += qtText(label(mode));
    }
    return labels;
}

QStringList SystemPresentation::modeSymbolNames() const {
    QStringList names;
    for (const auto mode : modes()) {
        names += symbolName(mode);
    }
    return names;
}

int SystemPresentation::modeIndex() const {
    const auto offered = modes();
    const auto mode = std::ranges::find(offered, *state_.published().menuBarInfoMode);
    return mode == offered.end() ? -1 : static_cast<int>(mode - offered.begin());
}

void SystemPresentation::setModeIndex(int index) {
    const auto offered = modes();
    if (index >= 0 && std::cmp_less(index, offered.size())) {
        state_.setMenuBarInfoMode(offered[static_cast<std::size_t>(index)]);
    }
}

bool SystemPresentation::launchesAtLogin() const {
    return *state_.published().launchAtLoginEnabled;
}

void SystemPresentation::setLaunchesAtLogin(bool launches) {
    state_.setLaunchAtLogin(launches);
}

QString SystemPresentation::launchAtLoginDetail() const {
    const auto& published = state_.published();
    QStringList parts;
    if (const auto& feedback = *published.launchAtLoginFeedback) {
        parts += QString::fromStdString(*feedback);
    }
    const auto status = QString::fromStdString(*published.launchAtLoginStatusDescription);
    if (status != "On" && status != "Off") {
        parts += status;
    }
    return parts.join(" · ");
}

bool SystemPresentation::showsDockIcon() const {
    return *state_.published().showDockIcon;
}

void SystemPresentation::setShowsDockIcon(bool shows) {
    state_.setShowDockIcon(shows);
}

bool SystemPresentation::notificationsEnabled() const {
    return *state_.published().notificationsEnabled;
}

void SystemPresentation::setNotificationsEnabled(bool isEnabled) {
    state_.setNotificationsEnabled(isEnabled);
}

QString SystemPresentation::notificationsDetail() const {
    switch (*state_.published().systemNotificationState) {
    case SystemNotificationState::denied:
        return qtText(deniedWording.in(system()));
    case SystemNotificationState::unavailable:
        return "Nothing on this desktop shows notifications right now.";
    case SystemNotificationState::disabled:
    case SystemNotificationState::notDetermined:
    case SystemNotificationState::authorized:
        break;
    }
    return {};
}

bool SystemPresentation::readsTemperatures() const {
    return *state_.published().experimentalTemperatureSensorsEnabled;
}

void SystemPresentation::setReadsTemperatures(bool reads) {
    state_.setExperimentalTemperatureSensorsEnabled(reads);
}

bool SystemPresentation::diagnosticLogsEnabled() const {
    return *state_.published().diagnosticLogsEnabled;
}

void SystemPresentation::setDiagnosticLogsEnabled(bool isEnabled) {
    state_.setDiagnosticLogsEnabled(isEnabled);
}

bool SystemPresentation::exportSucceeded() const {
    return *state_.published().diagnosticExportSucceeded;
}

QString SystemPresentation::exportText() const {
    return QString::fromStdString(
        withName(exportedWording.in(system()), *state_.published().diagnosticExportPath));
}

void SystemPresentation::exportLogs() {
    state_.exportDiagnosticLogs();
}

void SystemPresentation::resetToDefaults() {
    presentConfirmation_({.title = "Reset Preferences?",
                          .message = qtText(resetWording.in(system())),
                          .confirmTitle = "Reset Preferences",
                          .cancelTitle = "Cancel",
                          .action = [this] { state_.resetSettingsToDefaults(); }});
}

} // namespace cindertop::ui
