#pragma once

#include "platform/linux/FileReading.h"

#include <filesystem>
#include <string_view>

namespace cindertop::linux_platform {

/// The trees of a machine under tests/fixtures, for tests that only read.
inline Roots fixtureMachine(std::string_view name) {
    const auto machine = std::filesystem::path(CINDERTOP_FIXTURES) / name;
    return {.proc = machine / "proc", .sys = machine / "sys"};
}

} // namespace cindertop::linux_platform
