#include "platform/linux/Fans.h"

#include "platform/linux/AttributeFile.h"
#include "platform/linux/FileReading.h"

#include <algorithm>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace cindertop::linux_platform {

namespace {

using Path = std::filesystem::path;

/// "fan1_input"
bool isFanInput(std::string_view name) {
    constexpr std::string_view before = "fan";
    constexpr std::string_view behind = "_input";
    if (!name.starts_with(before) || !name.ends_with(behind) ||
        name.size() <= before.size() + behind.size()) {
        return false;
    }
    name.remove_prefix(before.size());
    name.remove_suffix(behind.size());
    return std::ranges::all_of(name, [](char digit) { return digit >= '0' && digit <= '9'; });
}

/// "unsupported" and a missing attribute are devices without power management at run time.
bool isAsleep(const Path& chip) {
    const auto status = AttributeFile(chip / "device/power/runtime_status").word();
    return status ? *status != "active" && *status != "unsupported" : status.error() != FileError::missing;
}

bool hasFan(const Path& chip) {
    const auto names = listFolder(chip).value_or(std::vector<std::string>{});
    const bool namesOne = std::ranges::any_of(names, isFanInput);
    if (!namesOne || isAsleep(chip)) {
        return false;
    }
    return std::ranges::any_of(names, [&](const std::string& name) {
        return isFanInput(name) && AttributeFile(chip / name).integer().has_value();
    });
}

} // namespace

bool findFan(const Roots& roots) {
    const auto folder = roots.sys / "class/hwmon";
    const auto chips = listFolder(folder).value_or(std::vector<std::string>{});
    return std::ranges::any_of(chips, [&](const std::string& chip) { return hasFan(folder / chip); });
}

} // namespace cindertop::linux_platform
