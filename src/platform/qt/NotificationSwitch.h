#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

namespace cindertop::desktop {

/// Whether "Notifications" is off for this program in GNOME's settings. False where the schema of these
/// settings is not installed. Only the program's own switch counts: "do not disturb" passes.
bool gnomeSwitchesNotificationsOff();

/// Whether pop-ups of this program are off in Plasma's settings; `text` is that of the user's plasmanotifyrc.
bool plasmaSwitchesNotificationsOff(std::string_view text);

/// Tells whether the user has switched this program's notifications off in the desktop's settings. Reads them
/// each time; main thread.
using NotificationSwitch = std::function<bool()>;

/// The switch of the desktop named in `currentDesktop`, the value of XDG_CURRENT_DESKTOP ("ubuntu:GNOME"),
/// whose files are below `configFolder`. A desktop without such a switch has never switched anything off.
NotificationSwitch notificationSwitch(const std::string& currentDesktop, std::filesystem::path configFolder);

} // namespace cindertop::desktop
