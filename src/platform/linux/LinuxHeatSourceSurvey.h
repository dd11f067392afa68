#pragma once

#include "platform/HeatSourceSurvey.h"
#include "platform/ProcessInformation.h"
#include "platform/linux/HwmonSensors.h"
#include "platform/linux/LinuxThermalPressureNotifications.h"
#include "platform/linux/Roots.h"

#include <optional>
#include <string>
#include <vector>

namespace cindertop::linux_platform {

class LinuxHeatSourceSurvey final : public HeatSourceSurvey {
public:
    /// All must outlive this object.
    LinuxHeatSourceSurvey(Roots roots, const ProcessInformation& process,
                          LinuxThermalPressureNotifications& pressure, HwmonSensors& sensors);

    /// Fans are looked for once.
    HeatSources findHeatSources() override;

private:
    std::optional<std::string> pressureSource();
    std::vector<std::string> answeringSensors();

    Roots roots_;
    const ProcessInformation& process_;
    LinuxThermalPressureNotifications& pressure_;
    HwmonSensors& sensors_;
    std::optional<bool> hasFan_;
};

} // namespace cindertop::linux_platform
