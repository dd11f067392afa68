#pragma once

#include "support/Wording.h"

namespace cindertop::ui {

/// In the popover and in the status item's menu: leads to the window that is named "Settings".
inline constexpr Wording settingsMenuTitle{"Preferences...", "Settings..."};

} // namespace cindertop::ui
