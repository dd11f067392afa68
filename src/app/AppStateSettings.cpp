#include "app/AppState.h"

#include <algorithm>

namespace cindertop {

AppSettingsFields AppState::currentFields() const {
    return {
        .experimentalTemperatureSensorsEnabled = *published_.experimentalTemperatureSensorsEnabled,
        .menuBarInfoMode = *published_.menuBarInfoMode,
        .showDockIcon = *published_.showDockIcon,
        .diagnosticLogsEnabled = *published_.diagnosticLogsEnabled,
        .notificationsEnabled = *published_.notificationsEnabled,
        .notificationMinimumLevel = *published_.notificationMinimumLevel,
        .recommendationVerbosity = *published_.recommendationVerbosity,
        .showProcessOffenders = *published_.showProcessOffenders,
        .showContextInsights = *published_.showContextInsights,
        .historyEnabled = *published_.historyEnabled,
        .historyDurationMinutes = *published_.historyDurationMinutes,
        .temperatureUnit = *published_.temperatureUnit,
    };
}

AppSettings AppState::currentSettings() const {
    return AppSettings(currentFields());
}

void AppState::saveSettings() {
    if (!isApplyingSettings_) {
        settingsStore_.save(currentSettings());
    }
}

void AppState::setExperimentalTemperatureSensorsEnabled(bool isEnabled) {
    published_.experimentalTemperatureSensorsEnabled.set(isEnabled);
    saveSettings();
    if (!isEnabled && *published_.menuBarInfoMode == MenuBarInfoMode::temperature) {
        setMenuBarInfoMode(MenuBarInfoMode::none);
    }
    if (isMonitoring()) {
        stopThermalMonitoring();
        updateMonitoringState();
    }
}

void AppState::setMenuBarInfoMode(MenuBarInfoMode mode) {
    published_.menuBarInfoMode.set(mode);
    saveSettings();
}

void AppState::setShowDockIcon(bool isShown) {
    published_.showDockIcon.set(isShown);
    saveSettings();
    updateActivationPolicy();
}

void AppState::updateActivationPolicy() const {
    if (environment_.desktop != nullptr) {
        environment_.desktop->setActivationPolicy(*published_.showDockIcon ? ActivationPolicy::regular
                                                                           : ActivationPolicy::accessory);
    }
}

void AppState::setDiagnosticLogsEnabled(bool isEnabled) {
    published_.diagnosticLogsEnabled.set(isEnabled);
    saveSettings();
    if (!diagnosticLogService_.isConfigured() || diagnosticLogService_.isEnabled() != isEnabled) {
        diagnosticLogService_.configure(isEnabled);
    }
    if (!isEnabled) {
        diagnosticExportStatusTask_.reset();
        published_.diagnosticExportSucceeded.set(false);
    }
}

void AppState::setNotificationsEnabled(bool isEnabled) {
    published_.notificationsEnabled.set(isEnabled);
    saveSettings();
    refreshNotificationState();
}

void AppState::refreshNotificationState() {
    const bool isEnabled = *published_.notificationsEnabled;
    environment_.executor.post([this, isEnabled, request = ++notificationStateRequests_] {
        systemNotificationService_.prepare(isEnabled, [this, request](SystemNotificationState state) {
            if (request == notificationStateRequests_) { // the answer to the latest change is the last word
                published_.systemNotificationState.set(state);
            }
        });
    });
}

void AppState::setNotificationMinimumLevel(NotificationMinimumLevel level) {
    published_.notificationMinimumLevel.set(level);
    saveSettings();
}

void AppState::setRecommendationVerbosity(RecommendationVerbosity verbosity) {
    published_.recommendationVerbosity.set(verbosity);
    saveSettings();
}

void AppState::setShowProcessOffenders(bool isShown) {
    published_.showProcessOffenders.set(isShown);
    saveSettings();
    if (isShown) {
        nextProcessOffenderSampleDate_ = {};
        return;
    }
    published_.processOffenderSnapshot.set(ProcessOffenderSnapshot::empty());
    refreshRecommendationsFromLatest(environment_.machine.clock.now());
    environment_.executor.post(
        [this] { environment_.executor.submit([this] { engines_.offenders.reset(); }, [] {}); });
}

void AppState::setShowContextInsights(bool isShown) {
    published_.showContextInsights.set(isShown);
    saveSettings();
    refreshRecommendationsFromLatest(environment_.machine.clock.now());
}

void AppState::setHistoryEnabled(bool isEnabled) {
    published_.historyEnabled.set(isEnabled);
    saveSettings();
    if (isEnabled) {
        nextThermalHistorySampleDate_ = {};
    } else {
        clearHistory();
    }
}

void AppState::setHistoryDurationMinutes(std::int64_t minutes) {
    published_.historyDurationMinutes.set(minutes);
    saveSettings();
    const auto clamped = std::clamp(minutes, historyMinutesBounds.least, historyMinutesBounds.most);
    if (clamped != minutes) {
        setHistoryDurationMinutes(clamped);
    }
}

void AppState::setTemperatureUnit(TemperatureUnit unit) {
    published_.temperatureUnit.set(unit);
    saveSettings();
    temperatures_ = environment_.temperatures.in(unit);
    if (latestThermalScore_) {
        published_.thermalSnapshot.set(ThermalSnapshot::of(*latestThermalScore_, temperatures_));
    }
}

void AppState::applySettings(const AppSettings& settings) {
    isApplyingSettings_ = true;
    setExperimentalTemperatureSensorsEnabled(settings->experimentalTemperatureSensorsEnabled);
    setMenuBarInfoMode(settings->menuBarInfoMode);
    setShowDockIcon(settings->showDockIcon);
    setDiagnosticLogsEnabled(settings->diagnosticLogsEnabled);
    setNotificationsEnabled(settings->notificationsEnabled);
    setNotificationMinimumLevel(settings->notificationMinimumLevel);
    setRecommendationVerbosity(settings->recommendationVerbosity);
    setShowProcessOffenders(settings->showProcessOffenders);
    setShowContextInsights(settings->showContextInsights);
    setHistoryEnabled(settings->historyEnabled);
    setHistoryDurationMinutes(settings->historyDurationMinutes);
    setTemperatureUnit(settings->temperatureUnit);
    isApplyingSettings_ = false;
}

void AppState::resetSettingsToDefaults() {
    applySettings(settingsStore_.reset());
    const auto status = environment_.loginItem.status();
    if (status == LoginItemStatus::enabled || status == LoginItemStatus::requiresApproval) {
        setLaunchAtLogin(false);
    } else {
        refreshLaunchAtLoginStatus();
    }
    log(DiagnosticLogLevel::info, DiagnosticLogCategory::settings, "Settings reset to defaults");
}

} // namespace cindertop
