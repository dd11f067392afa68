#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cindertop::linux_platform {

/// The unit of systemd that a process runs in.
struct ControlGroupUnit {
    std::string name;           ///< as it stands in the tree, escapes and all: "app-gnome-firefox-1234.scope"
    std::string userManager;    ///< "user@UID.service", which it is a unit of; empty: the system's manager
    bool isBelowAppSlice{};     ///< and no part of the desktop itself
    bool isBelowSessionSlice{}; ///< part of the desktop itself
    bool isBelowSystemSlice{};  ///< a service of the system
    bool isTerminalTab{};       ///< in a part of a terminal's unit that holds what runs in one tab

    bool operator==(const ControlGroupUnit&) const = default;
};

/// The innermost unit that /proc/PID/cgroup names on its "0::" line; none without that line or without a
/// unit.
std::optional<ControlGroupUnit> parseControlGroup(std::string_view text);

/// What the name of a unit says about the application in it. At most one of them is set, `desktopIds` apart.
struct UnitApplication {
    std::optional<std::string> flatpakId;
    std::optional<std::string> snapId; ///< NAME_APP, as the desktop entries of snaps are called
    /// What the desktop identifier may be, likeliest first: only one that is installed counts.
    std::vector<std::string> desktopIds;
    bool isTerminalChild{}; ///< what a terminal started, and so no part of it

    bool operator==(const UnitApplication&) const = default;
};

UnitApplication parseUnit(const ControlGroupUnit& unit);

} // namespace cindertop::linux_platform
