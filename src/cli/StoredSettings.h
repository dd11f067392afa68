#pragma once

#include "persistence/AppSettings.h"
#include "platform/UserDefaults.h"

namespace cindertop::cli {

/// The stored preferences as the agent would have them; `standard` are those of a user who never chose
/// anything. What the agent would repair stays as it is stored.
AppSettings storedSettings(const UserDefaults& defaults, const AppSettings& standard);

} // namespace cindertop::cli
