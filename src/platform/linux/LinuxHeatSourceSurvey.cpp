#include "platform/linux/LinuxHeatSourceSurvey.h"

#include "platform/linux/AttributeFile.h"
#include "platform/linux/FileReading.h"

#include <algorithm>
#include <filesystem>
#include <string>
#include <string_view>
#include <utility>
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

LinuxHeatSourceSurvey::LinuxHeatSourceSurvey(Roots roots, const ProcessInformation& process,
                                             LinuxThermalPressureNotifications& pressure,
                                             HwmonSensors& sensors)
    : roots_(std::move(roots)), process_(process), pressure_(pressure), sensors_(sensors) {}

HeatSources LinuxHeatSourceSurvey::findHeatSources() {
    if (!hasFan_) {
        hasFan_ = findFan(roots_);
    }
    return {.thermalState = process_.thermalState(),
            .pressureSource = pressureSource(),
            .sensors = answeringSensors(),
            .hasFan = *hasFan_};
}

std::optional<std::string> LinuxHeatSourceSurvey::pressureSource() {
    const auto registration = pressure_.registerCheck(thermalPressureNotificationName);
    if (registration.status != 0) {
        return std::nullopt;
    }
    pressure_.cancel(registration.token);
    return pressure_.status().reason;
}

std::vector<std::string> LinuxHeatSourceSurvey::answeringSensors() {
    std::vector<std::string> products;
    for (const auto& sensor : sensors_.list()) {
        if (sensors_.temperature(*sensor)) {
            products.push_back(HwmonSensors::product(*sensor));
        }
    }
    return products;
}

} // namespace cindertop::linux_platform
