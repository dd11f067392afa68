#include "platform/linux/LinuxHeatSourceSurvey.h"

#include "platform/linux/Fans.h"

#include <utility>

namespace cindertop::linux_platform {

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
