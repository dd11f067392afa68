#pragma once

#include "app/AppRoute.h"
#include "app/OnboardingState.h"
#include "app/Published.h"
#include "app/ThermalSnapshot.h"
#include "assistant/CinderRecommendationSnapshot.h"
#include "assistant/SystemNotificationState.h"
#include "context/SystemContextSnapshot.h"
#include "cpu/ProcessOffenderSnapshot.h"
#include "persistence/AppSettings.h"
#include "persistence/ThermalMonitoringSnapshot.h"

#include <cstdint>
#include <optional>
#include <string>

namespace cindertop {

/// All that the program shows of its state; AppState alone changes it.
struct AppStateProperties {
    Published<AppRoute> route{AppRoute::settings};
    Published<bool> legalTermsAccepted{false};
    Published<OnboardingState> onboardingState{OnboardingState{}};
    Published<MacHardwareProfile> hardwareProfile{MacHardwareProfile{}};

    Published<ThermalSnapshot> thermalSnapshot{ThermalSnapshot::idle()};
    Published<SystemContextSnapshot> systemContextSnapshot{SystemContextSnapshot::placeholder()};
    Published<ProcessOffenderSnapshot> processOffenderSnapshot{ProcessOffenderSnapshot::empty()};
    Published<CinderRecommendationSnapshot> recommendationSnapshot{CinderRecommendationSnapshot::empty()};
    Published<ThermalMonitoringSnapshot> monitoringSnapshot{ThermalMonitoringSnapshot::empty()};
    Published<SystemNotificationState> systemNotificationState{SystemNotificationState::disabled};
    Published<bool> isPaused{false}; ///< never stored: a new start monitors again

    Published<bool> launchAtLoginEnabled{false};
    Published<std::string> launchAtLoginStatusDescription{"Off"};
    Published<std::optional<std::string>> launchAtLoginFeedback{std::nullopt}; ///< the last result, in words
    Published<bool> diagnosticExportSucceeded{false}; ///< for 2.5 s after each success
    Published<std::string> diagnosticExportPath{""};  ///< of the latest success

    // The preferences, as in AppSettings.
    Published<bool> experimentalTemperatureSensorsEnabled{
        AppSettingsFields{}.experimentalTemperatureSensorsEnabled};
    Published<MenuBarInfoMode> menuBarInfoMode{AppSettingsFields{}.menuBarInfoMode};
    Published<bool> showDockIcon{AppSettingsFields{}.showDockIcon};
    Published<bool> diagnosticLogsEnabled{AppSettingsFields{}.diagnosticLogsEnabled};
    Published<bool> notificationsEnabled{AppSettingsFields{}.notificationsEnabled};
    Published<NotificationMinimumLevel> notificationMinimumLevel{
        AppSettingsFields{}.notificationMinimumLevel};
    Published<RecommendationVerbosity> recommendationVerbosity{AppSettingsFields{}.recommendationVerbosity};
    Published<bool> showProcessOffenders{AppSettingsFields{}.showProcessOffenders};
    Published<bool> showContextInsights{AppSettingsFields{}.showContextInsights};
    Published<bool> historyEnabled{AppSettingsFields{}.historyEnabled};
    Published<std::int64_t> historyDurationMinutes{AppSettingsFields{}.historyDurationMinutes};
    Published<TemperatureUnit> temperatureUnit{AppSettingsFields{}.temperatureUnit};
};

} // namespace cindertop
