#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>

namespace cindertop::linux_platform {

/// The first `size` bytes of a file, or all of a shorter one, in one open. For files of /proc that grow with
/// the machine (`stat` and `cpuinfo` reach hundreds of kilobytes) when only their start is wanted. None when
/// unreadable.
std::optional<std::string> readFileHead(const std::filesystem::path& file, std::size_t size);

} // namespace cindertop::linux_platform
