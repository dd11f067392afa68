#pragma once

#include <array>
#include <string_view>

// Names by which processes and applications are known, all in lower case. The `...ProcessNames` are whole
// names of processes; the fragments may stand anywhere in a bundle identifier or in a display or process
// name.

namespace cindertop {

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

} // namespace cindertop
