#include "app/AppState.h"

#include <array>

namespace cindertop {

void AppState::saveSettings() {
    if (!isApplyingSettings_) {
        settingsStore_.save(currentSettings());
    }
}

void AppState::change(Preference::Member member, const AppSettingsFields& fields) {
    struct Effect {
        Preference::Member member;
        void (*take)(AppState& state);
    };

    using Fields = AppSettingsFields;
    static constexpr std::array effects{
        Effect{&Fields::experimentalTemperatureSensorsEnabled,
               [](AppState& state) { state.followSensors(); }},
        Effect{&Fields::showDockIcon, [](AppState& state) { state.updateActivationPolicy(); }},
        Effect{&Fields::diagnosticLogsEnabled, [](AppState& state) { state.followDiagnosticLogs(); }},
        Effect{&Fields::notificationsEnabled, [](AppState& state) { state.refreshNotificationState(); }},
        Effect{&Fields::showProcessOffenders, [](AppState& state) { state.followProcessOffenders(); }},
        Effect{&Fields::showContextInsights,
               [](AppState& state) {
                   state.refreshRecommendationsFromLatest(state.environment_.machine.clock.now());
               }},
        Effect{&Fields::historyEnabled, [](AppState& state) { state.followHistory(); }},
        Effect{&Fields::historyDurationMinutes,
               [](AppState& state) {
                   const auto repaired = state.currentSettings()->historyDurationMinutes;
                   if (repaired != state.published_.settings->historyDurationMinutes) {
                       state.set(&Fields::historyDurationMinutes, repaired);
                   }
               }},
        Effect{&Fields::temperatureUnit, [](AppState& state) { state.followTemperatureUnit(); }},
    };
    published_.settings.set(fields);
    saveSettings();
    for (const auto& [changed, take] : effects) {
        if (changed == member) {
            take(*this);
        }
    }
}

std::expected<void, std::string> AppState::set(const Preference& preference, const PreferenceValue& value) {
    auto fields = *published_.settings;
    auto written = preference.write(fields, value);
    if (written) {
        change(preference.member, fields);
    }
    return written;
}

void AppState::applySettings(const AppSettings& settings) {
    isApplyingSettings_ = true;
    for (const auto& preference : preferences()) {
        [[maybe_unused]] const auto written = set(preference, preference.read(*settings));
    }
    isApplyingSettings_ = false;
}

void AppState::followSensors() {
    const auto& settings = *published_.settings;
    if (!settings.experimentalTemperatureSensorsEnabled &&
        settings.menuBarInfoMode == MenuBarInfoMode::temperature) {
        set(&AppSettingsFields::menuBarInfoMode, MenuBarInfoMode::none);
    }
    if (isMonitoring()) {
        stopThermalMonitoring();
        updateMonitoringState();
    }
}

void AppState::updateActivationPolicy() const {
    if (environment_.desktop != nullptr) {
        environment_.desktop->setActivationPolicy(
            published_.settings->showDockIcon ? ActivationPolicy::regular : ActivationPolicy::accessory);
    }
}

void AppState::followDiagnosticLogs() {
    const bool isEnabled = published_.settings->diagnosticLogsEnabled;
    if (!diagnosticLogService_.isConfigured() || diagnosticLogService_.isEnabled() != isEnabled) {
        diagnosticLogService_.configure(isEnabled);
    }
    if (!isEnabled) {
        diagnosticExportStatusTask_.reset();
        published_.diagnosticExportSucceeded.set(false);
    }
}

void AppState::refreshNotificationState() {
    const bool isEnabled = published_.settings->notificationsEnabled;
    environment_.executor.post([this, isEnabled, request = ++notificationStateRequests_] {
        systemNotificationService_.prepare(isEnabled, [this, request](SystemNotificationState state) {
            if (request == notificationStateRequests_) { // the answer to the latest change is the last word
                published_.systemNotificationState.set(state);
            }
        });
    });
}

void AppState::followProcessOffenders() {
    if (published_.settings->showProcessOffenders) {
        nextProcessOffenderSampleDate_ = {};
        return;
    }
    published_.processOffenderSnapshot.set(ProcessOffenderSnapshot::empty());
    refreshRecommendationsFromLatest(environment_.machine.clock.now());
    environment_.executor.post(
        [this] { environment_.executor.submit([this] { engines_.offenders.reset(); }, [] {}); });
}

void AppState::followHistory() {
    if (published_.settings->historyEnabled) {
        nextThermalHistorySampleDate_ = {};
    } else {
        clearHistory();
    }
}

void AppState::followTemperatureUnit() {
    temperatures_ = environment_.temperatures.in(published_.settings->temperatureUnit);
    if (latestThermalScore_) {
        published_.thermalSnapshot.set(ThermalSnapshot::of(*latestThermalScore_, temperatures_));
    }
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
