#pragma once

namespace cindertop::desktop {

/// Whether "Notifications" is off for this program in GNOME's settings. False where the schema of these
/// settings is not installed. Only the program's own switch counts: "do not disturb" passes.
bool gnomeSwitchesNotificationsOff();

} // namespace cindertop::desktop
