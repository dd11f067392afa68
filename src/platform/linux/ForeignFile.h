#pragma once

#include "platform/linux/FileReading.h"

#include <cstddef>
#include <expected>
#include <filesystem>
#include <string>

namespace cindertop::linux_platform {

/// The whole text of a regular file that another process made or named. `file` counts from the folder `root`,
/// with or without a "/" in front, and nothing outside is reached: no link below `root` is followed and ".."
/// does not leave it. Pipes, devices and folders are unreadable and never waited for.
///
/// A path of several folders needs openat2 (Linux 5.6); without it, as in some containers, the file is
/// refused.
std::expected<std::string, FileError> readForeignFile(const std::filesystem::path& root,
                                                      const std::filesystem::path& file, std::size_t limit);

} // namespace cindertop::linux_platform
