#include "persistence/AppSettings.h"

#include "persistence/Preferences.h"

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
    AppSettingsFields fields;
    for (const auto& preference : preferences()) {
        if (preference.extras.onLinux && system == OperatingSystem::gnuLinux) {
            [[maybe_unused]] const auto written =
                preference.write(fields, preferenceValue(preference, *preference.extras.onLinux));
        }
    }
    return AppSettings(fields);
}

} // namespace cindertop
