#pragma once

#include "app/DeploymentFile.h"
#include "persistence/AppSettings.h"
#include "persistence/DiagnosticLogExport.h"
#include "platform/SystemValues.h"

#include <string>

namespace cindertop {

/// What an export tells about a program beside its settings.
struct ProgramCircumstances {
    std::string launchAtLoginStatus; ///< as the settings show it: "On"
    OperatingSystem operatingSystem;
    std::string operatingSystemVersion; ///< the system's name and version
    std::string architecture;           ///< of the processor that the program was built for
};

/// The context of a diagnostic export. What the deployment file does not tell has a fallback, and so has the
/// model.
DiagnosticExportContext diagnosticExportContext(const AppSettingsFields& settings,
                                                const ProgramCircumstances& circumstances,
                                                const SystemValues& system, const DeploymentFile& deployment);

} // namespace cindertop
