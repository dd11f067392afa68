#pragma once

#include "persistence/AppSettings.h"
#include "platform/UserDefaults.h"

#include <vector>

namespace cindertop {

/// Keeps the settings among the user's defaults, each under a key of its own. Main thread only.
class AppSettingsStore {
public:
    /// `standard` are the defaults on this machine. Reads and writes nothing yet.
    AppSettingsStore(UserDefaults& defaults, const AppSettings& standard)
        : defaults_(defaults), standard_(standard) {}

    /// The stored settings: migrated, repaired, and stored again as they are returned. Whatever cannot be
    /// understood has its default. A store without any preference is new: it has the defaults.
    AppSettings load();

    /// Stores every field.
    void save(const AppSettings& settings);

    /// Stores the defaults and returns them.
    AppSettings reset();

    /// What the user may choose, in the order in which it is offered.
    static std::vector<MenuBarInfoMode> availableMenuBarInfoModes(bool experimentalSensorsEnabled);

private:
    bool isNew() const;
    void migrate();

    UserDefaults& defaults_;
    AppSettings standard_;
};

} // namespace cindertop
