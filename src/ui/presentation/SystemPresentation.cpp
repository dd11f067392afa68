#include "ui/presentation/SystemPresentation.h"

#include "persistence/AppSettingsStore.h"
#include "persistence/Preferences.h"
#include "support/Wording.h"
#include "ui/presentation/QtText.h"

#include <algorithm>
#include <optional>
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

QVariant shownValue(const Preference& preference, const AppSettingsFields& settings) {
    const auto value = preference.read(settings);
    if (const auto* const flag = std::get_if<bool>(&value)) {
        return *flag;
    }
    if (const auto* const number = std::get_if<std::int64_t>(&value)) {
        return QVariant::fromValue<qlonglong>(*number);
    }
    const auto choices = preference.choices();
    const auto place = std::ranges::find(choices, std::get<std::string>(value));
    return place == choices.end() ? -1 : static_cast<int>(place - choices.begin());
}

/// The way back; none where no choice has that place.
std::optional<PreferenceValue> wantedValue(const Preference& preference, const QVariant& shown) {
    const auto choices = preference.choices();
    if (choices.empty()) {
        return preference.extras.bounds ? PreferenceValue(std::int64_t{shown.toLongLong()})
                                        : PreferenceValue(shown.toBool());
    }
    const auto place = shown.toInt();
    return place >= 0 && std::cmp_less(place, choices.size())
               ? std::optional<PreferenceValue>(std::string(choices[static_cast<std::size_t>(place)]))
               : std::nullopt;
}

} // namespace

SystemPresentation::SystemPresentation(AppState& state, PresentConfirmation presentConfirmation,
                                       bool canEnterTaskBar)
    : state_(state), presentConfirmation_(std::move(presentConfirmation)), canEnterTaskBar_(canEnterTaskBar) {
    const auto& published = state_.published();
    const auto observe = [this](const auto& property) {
        observations_.emplace_back(property.bindable().addNotifier([this] { Q_EMIT changed(); }));
    };
    observe(published.settings);
    observe(published.launchAtLoginEnabled);
    observe(published.launchAtLoginStatusDescription);
    observe(published.launchAtLoginFeedback);
    observe(published.systemNotificationState);
    observe(published.diagnosticExportSucceeded);
}

QVariantMap SystemPresentation::preferences() const {
    QVariantMap values;
    for (const auto& preference : cindertop::preferences()) {
        values.insert(qtText(preference.name), shownValue(preference, settings()));
    }
    return values;
}

void SystemPresentation::set(const QString& name, const QVariant& value) {
    const auto* const preference = findPreference(name.toStdString());
    const auto wanted = preference != nullptr ? wantedValue(*preference, value) : std::nullopt;
    if (!wanted) {
        return;
    }
    const bool isOffered = checkIsOffered(*preference, *wanted, settings()).has_value();
    if (preference->member == Preference::Member(&AppSettingsFields::showProcessOffenders)) {
        ranksApplicationsDetail_ = isOffered ? "" : "Always on: advice and alerts are made from it.";
    }
    if (isOffered) {
        [[maybe_unused]] const auto written = state_.set(*preference, *wanted);
    }
    Q_EMIT changed();
}

std::vector<MenuBarInfoMode> SystemPresentation::modes() const {
    return AppSettingsStore::availableMenuBarInfoModes(settings().experimentalTemperatureSensorsEnabled);
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

std::vector<int> SystemPresentation::historyLengths() const {
    std::vector lengths{15, 30, 45, 60}; // minutes
    const auto chosen = static_cast<int>(settings().historyDurationMinutes);
    if (std::ranges::find(lengths, chosen) == lengths.end()) {
        lengths.push_back(chosen);
    }
    return lengths;
}

QStringList SystemPresentation::historyLengthLabels() const {
    QStringList labels;
    for (const auto minutes : historyLengths()) {
        labels += QString("%1 min").arg(minutes);
    }
    return labels;
}

int SystemPresentation::historyLengthIndex() const {
    const auto lengths = historyLengths();
    const auto chosen = std::ranges::find(lengths, settings().historyDurationMinutes);
    return static_cast<int>(chosen - lengths.begin());
}

void SystemPresentation::setHistoryLengthIndex(int index) {
    const auto lengths = historyLengths();
    if (index >= 0 && std::cmp_less(index, lengths.size())) {
        state_.set(&AppSettingsFields::historyDurationMinutes, lengths[static_cast<std::size_t>(index)]);
    }
}

bool SystemPresentation::offersTemperatureUnit() const {
    return system() == OperatingSystem::gnuLinux;
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
