#include "app/DiagnosticContext.h"

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
            .launchAtLoginStatus = circumstances.launchAtLoginStatus,
            .settings = settings};
}

} // namespace cindertop
