#pragma once

#include <array>
#include <string_view>

// What the tables of ProcessNames.h lack where the system is Linux, in the same form.

namespace cindertop {

/// The kernel keeps the first 15 bytes of a process's name, and other users' processes often show nothing
/// longer.
constexpr std::string_view cutByLinux(std::string_view name) {
    return name.substr(0, 15);
}

inline constexpr auto linuxIndexingProcessNames = std::to_array<std::string_view>({
    "localsearch-3",
    "localsearch-extractor-3",
    "tracker-miner-fs-3",
    "tracker-extract-3",
    "baloo_file",
    "baloo_file_extractor",
    "updatedb",
    "updatedb.plocate",
    "mandb",
    "recollindex",
});

inline constexpr auto linuxSoftwareUpdateProcessNames = std::to_array<std::string_view>({
    "packagekitd",
    "unattended-upgrade",
    "apt",
    "apt-get",
    "aptd",
    "dpkg",
    "dnf",
    "dnf5",
    "rpm-ostree",
    "zypper",
    "pacman",
    "snapd",
    "flatpak-system-helper",
    "fwupd",
    "fwupdmgr",
});

inline constexpr auto linuxSecurityProcessNames = std::to_array<std::string_view>({
    "clamd",
    "clamscan",
    "freshclam",
    "clamonacc",
    "rkhunter",
    "aide",
    "auditd",
});

inline constexpr auto linuxBrowserNameFragments = std::to_array<std::string_view>({
    "chromium",
    "vivaldi",
    "librewolf",
    "epiphany",
});

inline constexpr auto linuxDeveloperProcessNames = std::to_array<std::string_view>({
    "cc1",
    "cc1plus",
    "rustc",
    "cargo",
    "ninja",
    "make",
    "go",
    "javac",
});

} // namespace cindertop
