#include "platform/desktop/NotificationSwitch.h"

#include "platform/desktop/GnomeNotificationSettings.h"
#include "platform/desktop/PlasmaNotificationSettings.h"
#include "support/AtomicFile.h"
#include "support/PosixFileSystem.h"

#include <cstddef>
#include <string_view>
#include <utility>

namespace cindertop::desktop {

namespace {

/// Of the desktop's settings, far more than they ever have.
constexpr std::size_t fileLimit = 1'000'000;

/// `list` is parted by ":".
bool names(std::string_view list, std::string_view name) {
    return (":" + std::string(list) + ":").contains(":" + std::string(name) + ":");
}

bool isSwitchedOffInPlasma(const std::filesystem::path& configFolder) {
    PosixFileSystem files;
    const auto text = wholeFile(files, configFolder / "plasmanotifyrc", fileLimit);
    return text && plasmaSwitchesNotificationsOff(*text);
}

} // namespace

NotificationSwitch notificationSwitch(const std::string& currentDesktop, std::filesystem::path configFolder) {
    if (names(currentDesktop, "GNOME")) {
        return gnomeSwitchesNotificationsOff;
    }
    if (names(currentDesktop, "KDE")) {
        return [configFolder = std::move(configFolder)] { return isSwitchedOffInPlasma(configFolder); };
    }
    return [] { return false; };
}

} // namespace cindertop::desktop
