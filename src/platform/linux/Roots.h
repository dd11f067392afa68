#pragma once

#include <filesystem>

namespace cindertop::linux_platform {

/// Where the kernel's file systems stand. Tests put fixture trees there.
struct Roots {
    std::filesystem::path proc = "/proc";
    std::filesystem::path sys = "/sys";
};

} // namespace cindertop::linux_platform
