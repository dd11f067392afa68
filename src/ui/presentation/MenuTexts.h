#pragma once

#include "support/Wording.h"
#include "ui/presentation/QtText.h"

#include <QString>

namespace cindertop::ui {

/// In the popover and in the status item's menu: leads to the window that is named "Settings".
inline constexpr Wording settingsMenuTitle{"Preferences...", "Settings..."};

/// What the popover and the menu call the command that pauses or resumes the monitoring.
inline QString monitoringToggleTitle(OperatingSystem system, bool isPaused) {
    constexpr Wording pause{"Disable Monitoring", "Pause Monitoring"};
    constexpr Wording resume{"Enable Monitoring", "Resume Monitoring"};
    return qtText((isPaused ? resume : pause).in(system));
}

} // namespace cindertop::ui
