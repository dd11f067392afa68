#pragma once

#include "persistence/AppSettings.h"
#include "platform/UserDefaults.h"

#include <vector>

namespace cindertop {

/// Keeps the settings among the user's defaults, each under a key of its own. Main thread only.
class AppSettingsStore {
public:
    /// Keeps the reference and does nothing else.
    explicit AppSettingsStore(UserDefaults& defaults) : defaults_(defaults) {}

    /// The stored settings: migrated, repaired, and stored again as they are returned. Whatever cannot be
    /// understood has its default.
    AppSettings load();

    /// Stores every field.
    void save(const AppSettings& settings);

    /// Stores the defaults and returns them.
    AppSettings reset();

    /// What the user may choose, in the order in which it is offered.
    static std::vector<MenuBarInfoMode> availableMenuBarInfoModes(bool experimentalSensorsEnabled);

private:
    void migrate();
    UserDefaults& defaults_;
};

} // namespace cindertop
