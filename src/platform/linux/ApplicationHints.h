#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace cindertop::linux_platform {

/// The application's identifier in the file .flatpak-info that stands at the root of every Flatpak sandbox.
/// None for a runtime without an application.
std::optional<std::string> flatpakApplication(std::string_view flatpakInfo);

/// The desktop entry that a process was started from, in its environment (NAME=VALUE, each ended by a zero
/// byte). Children inherit the variables; they speak of the process whose identifier stands in them.
std::optional<std::string> launchedDesktopFile(std::string_view environment, std::int32_t processIdentifier);

/// The AppImage that mounted the folder which `executable` stands in, by the process's environment. Programs
/// that an AppImage starts inherit the variables, but stand elsewhere.
std::optional<std::string> appImageFile(std::string_view environment, std::string_view executable);

} // namespace cindertop::linux_platform
