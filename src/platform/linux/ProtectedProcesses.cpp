#include "platform/linux/ProtectedProcesses.h"

#include "platform/linux/ProcessStat.h"

#include <algorithm>
#include <array>
#include <string>

namespace cindertop::linux_platform {

namespace {

constexpr auto parts = std::to_array<std::string_view>({
    // display servers, compositors and window managers
    "Hyprland",
    "Xorg",
    "Xorg.bin",
    "Xwayland",
    "awesome",
    "bspwm",
    "budgie-wm",
    "cosmic-comp",
    "dwm",
    "enlightenment",
    "fluxbox",
    "gala",
    "herbstluftwm",
    "i3",
    "icewm",
    "kwin_wayland",
    "kwin_wayland_wrapper",
    "kwin_x11",
    "labwc",
    "marco",
    "metacity",
    "muffin",
    "mutter",
    "niri",
    "openbox",
    "phoc",
    "qtile",
    "river",
    "sway",
    "wayfire",
    "weston",
    "xfwm4",
    "xmonad",
    // shells, panels and desktops
    "budgie-panel",
    "cinnamon",
    "cosmic-panel",
    "dde-desktop",
    "dde-shell",
    "gnome-shell",
    "lxpanel",
    "lxqt-panel",
    "mate-panel",
    "phosh",
    "plasmashell",
    "waybar",
    "wingpanel",
    "xfce4-panel",
    "xfdesktop",
    // sessions and what they stand on
    "at-spi-bus-launcher",
    "cinnamon-session-binary",
    "cosmic-session",
    "dbus-broker",
    "dbus-broker-launch",
    "dbus-daemon",
    "gdm-wayland-session",
    "gdm-x-session",
    "gnome-session-binary",
    "gnome-session-init-worker",
    "gnome-session-service",
    "ksmserver",
    "lightdm",
    "lxqt-session",
    "lxsession",
    "mate-session",
    "plasma_session",
    "sddm-helper",
    "startplasma-wayland",
    "startplasma-x11",
    "systemd",
    "uwsm",
    "xfce4-session",
    "xinit",
});

constexpr std::array wrapperMarks{std::string_view("-wrapped"), std::string_view("-real")};

} // namespace

bool isProtectedProcess(std::string_view shortName) {
    // Nix and Guix call the program behind a wrapper ".NAME-wrapped" and ".NAME-real".
    const bool isWrapped = shortName.starts_with('.');
    return std::ranges::any_of(parts, [&](std::string_view part) {
        if (!isWrapped) {
            return part.substr(0, shortNameLimit) == shortName;
        }
        return std::ranges::any_of(wrapperMarks, [&](std::string_view mark) {
            return ("." + std::string(part) + std::string(mark)).substr(0, shortNameLimit) == shortName;
        });
    });
}

} // namespace cindertop::linux_platform
