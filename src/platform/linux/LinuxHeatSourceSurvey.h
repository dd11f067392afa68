#pragma once

#include "platform/HeatSourceSurvey.h"
#include "platform/ProcessInformation.h"
#include "platform/linux/FileReading.h"
#include "platform/linux/HwmonSensors.h"
#include "platform/linux/LinuxThermalPressureNotifications.h"

#include <optional>
#include <string>
#include <vector>

namespace cindertop::linux_platform {

/// Whether a chip of the machine tells the speed of a fan, be it 0. A chip whose device sleeps is not asked.
bool findFan(const Roots& roots);

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
