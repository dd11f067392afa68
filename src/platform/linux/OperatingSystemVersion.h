#pragma once

#include "platform/linux/FileReading.h"
#include "support/Wording.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace cindertop::linux_platform {

/// What every machine of this platform runs.
inline constexpr OperatingSystem operatingSystem = OperatingSystem::gnuLinux;

/// The value of a key in an os-release file, without quotes and escapes; none when absent or empty.
std::optional<std::string> osReleaseValue(std::string_view text, std::string_view key);

/// "Debian GNU/Linux 12 (bookworm), Linux 6.1.0-37-amd64": the distribution, as the first readable of the
/// files names it, and the kernel's release. Nothing tells this machine from others with the same
/// installation.
std::string operatingSystemVersion(const Roots& roots = {},
                                   const std::filesystem::path& osRelease = "/etc/os-release",
                                   const std::filesystem::path& fallback = "/usr/lib/os-release");

} // namespace cindertop::linux_platform
