#pragma once

#include <array>
#include <string_view>

namespace cindertop {

// Names by which processes and applications are known, all in lower case. The `...ProcessNames` are whole
// names of processes; the fragments may stand anywhere in a bundle identifier or in a display or process
// name.

inline constexpr auto spotlightProcessNames = std::to_array<std::string_view>({
    "mds",
    "mds_stores",
    "mdworker",
    "mdworker_shared",
    "mdwrite",
    "spotlightknowledged",
});

inline constexpr auto softwareUpdateProcessNames = std::to_array<std::string_view>({
    "softwareupdated",
    "softwareupdate",
    "installd",
    "storeassetd",
    "assetcachelocatorservice",
    "mobileassetd",
});

inline constexpr auto securityProcessNames = std::to_array<std::string_view>({
    "syspolicyd",
    "trustd",
    "xprotectservice",
    "xprotectremediator",
});

inline constexpr auto browserBundleIdentifiers = std::to_array<std::string_view>({
    "com.google.chrome",
    "com.apple.safari",
    "org.mozilla.firefox",
    "com.microsoft.edgemac",
    "com.brave.browser",
    "com.operasoftware",
});

inline constexpr auto browserNameFragments = std::to_array<std::string_view>({
    "chrome",
    "safari",
    "firefox",
    "edge",
    "brave",
    "opera",
});

inline constexpr auto developerBundleIdentifiers = std::to_array<std::string_view>({
    "com.apple.dt.xcode",
    "com.microsoft.vscode",
    "com.todesktop.230313mzl4w4u92",
    "com.github.wez.wezterm",
    "com.googlecode.iterm2",
});

inline constexpr auto developerNameFragments = std::to_array<std::string_view>({
    "xcode",
    "xcodebuild",
    "swift-frontend",
    "sourcekit",
    "codex",
    "visual studio code",
    "node",
    "clang",
});

// What the tables of ProcessNames.h lack where the system is Linux, in the same form.

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
