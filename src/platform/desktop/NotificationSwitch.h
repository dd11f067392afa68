#pragma once

#include <filesystem>
#include <functional>
#include <string>

namespace cindertop::desktop {

/// Tells whether the user has switched this program's notifications off in the desktop's settings. Reads them
/// anew each time; main thread.
using NotificationSwitch = std::function<bool()>;

/// The switch of the desktop named in `currentDesktop`, the value of XDG_CURRENT_DESKTOP ("ubuntu:GNOME"),
/// whose files are below `configFolder`. A desktop without such a switch has never switched anything off.
NotificationSwitch notificationSwitch(const std::string& currentDesktop, std::filesystem::path configFolder);

} // namespace cindertop::desktop
