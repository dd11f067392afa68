#include "persistence/AppSettings.h"

#include <algorithm>

namespace cindertop {

namespace {

MenuBarInfoMode allowedMode(const AppSettingsFields& fields) {
    switch (fields.menuBarInfoMode) {
    case MenuBarInfoMode::thermalScore:
    case MenuBarInfoMode::compactAlertOnly:
        return MenuBarInfoMode::thermalStatus;
    case MenuBarInfoMode::temperature:
        return fields.experimentalTemperatureSensorsEnabled ? MenuBarInfoMode::temperature
                                                            : MenuBarInfoMode::none;
    case MenuBarInfoMode::none:
    case MenuBarInfoMode::thermalStatus:
        break;
    }
    return fields.menuBarInfoMode;
}

} // namespace

AppSettings::AppSettings(const AppSettingsFields& fields) : fields_(fields) {
    fields_.schemaVersion = appSettingsSchemaVersion;
    fields_.showProcessOffenders = true;
    fields_.historyDurationMinutes =
        std::clamp(fields.historyDurationMinutes, historyMinutesBounds.least, historyMinutesBounds.most);
    fields_.menuBarInfoMode = allowedMode(fields);
}

AppSettings defaultSettings(OperatingSystem system) {
    if (system == OperatingSystem::gnuLinux) {
        return AppSettings({.experimentalTemperatureSensorsEnabled = true,
                            .menuBarInfoMode = MenuBarInfoMode::temperature,
                            .notificationsEnabled = true});
    }
    return AppSettings(AppSettingsFields{});
}

} // namespace cindertop
