#include "app/DiagnosticContext.h"

#include "support/Enumeration.h"

namespace cindertop {

DiagnosticExportContext diagnosticExportContext(const AppSettingsFields& settings,
                                                const ProgramCircumstances& circumstances,
                                                const SystemValues& system,
                                                const DeploymentFile& deployment) {
    return {.appVersion = deployment.text("CFBundleShortVersionString").value_or("0.1.0"),
            .appBuild = deployment.text("CFBundleVersion").value_or("dev"),
            .operatingSystem = circumstances.operatingSystem,
            .operatingSystemVersion = circumstances.operatingSystemVersion,
            .architecture = circumstances.architecture,
            .model = system.text("hw.model").value_or("unknown"),
            .menuBarInfoMode = std::string(caseName(settings.menuBarInfoMode)),
            .launchAtLoginStatus = circumstances.launchAtLoginStatus,
            .showDockIcon = settings.showDockIcon,
            .experimentalSensorsEnabled = settings.experimentalTemperatureSensorsEnabled,
            .notificationsEnabled = settings.notificationsEnabled,
            .notificationMinimumLevel = std::string(caseName(settings.notificationMinimumLevel)),
            .recommendationVerbosity = std::string(caseName(settings.recommendationVerbosity)),
            .showProcessOffenders = settings.showProcessOffenders,
            .showContextInsights = settings.showContextInsights,
            .historyEnabled = settings.historyEnabled,
            .historyDurationMinutes = settings.historyDurationMinutes,
            .diagnosticLogsEnabled = settings.diagnosticLogsEnabled};
}

} // namespace cindertop
