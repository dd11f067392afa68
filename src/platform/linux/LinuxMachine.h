#pragma once

#include "platform/Machine.h"
#include "platform/linux/FileReading.h"
#include "platform/linux/HwmonSensors.h"
#include "platform/linux/LidSwitch.h"
#include "platform/linux/LinuxApplicationCatalog.h"
#include "platform/linux/LinuxDisplayList.h"
#include "platform/linux/LinuxGraphicsUsage.h"
#include "platform/linux/LinuxHardwareMeters.h"
#include "platform/linux/LinuxHeatSourceSurvey.h"
#include "platform/linux/LinuxHostStatistics.h"
#include "platform/linux/LinuxPowerSources.h"
#include "platform/linux/LinuxProcessInformation.h"
#include "platform/linux/LinuxProcessTable.h"
#include "platform/linux/LinuxProcessorClocks.h"
#include "platform/linux/LinuxSystemValues.h"
#include "platform/linux/LinuxTemperatureEvents.h"
#include "platform/linux/LinuxThermalPressureNotifications.h"
#include "platform/linux/MachineHeat.h"
#include "platform/linux/PowerProfile.h"
#include "platform/linux/SystemBus.h"
#include "platform/linux/SystemClock.h"
#include "platform/linux/ThermalZones.h"

#include <memory>
#include <optional>
#include <string>

namespace cindertop::linux_platform {

/// All services of a Linux machine. They belong to the one thread that samples, and must not be asked after
/// its end; only a registration for the thermal pressure may still be cancelled then.
class LinuxMachine {
public:
    /// `bundleIdentifier` is that of the application that this program is, if it is one.
    explicit LinuxMachine(const Roots& roots = {}, std::optional<std::string> bundleIdentifier = std::nullopt,
                          const MonotonicClock& monotonicClock = steadyClock());

    LinuxMachine(const LinuxMachine&) = delete;
    LinuxMachine& operator=(const LinuxMachine&) = delete;

    Machine services();

private:
    SystemClock clock_;
    SystemBus bus_;
    PowerProfile powerProfile_;
    LidSwitch lid_;
    ThermalZones zones_;
    MachineHeat heat_;
    std::shared_ptr<SensorDevices> devices_;
    HwmonSensors sensors_;
    LinuxProcessInformation processInformation_;
    std::shared_ptr<LinuxThermalPressureNotifications> throttling_;
    LinuxTemperatureEvents temperatureEvents_;
    LinuxHardwareMeters meters_;
    LinuxProcessorClocks clocks_;
    LinuxHeatSourceSurvey heatSourceSurvey_;
    LinuxDisplayList displays_;
    LinuxPowerSources powerSources_;
    LinuxHostStatistics hostStatistics_;
    LinuxProcessTable processes_;
    LinuxApplicationCatalog applications_;
    LinuxGraphicsUsage graphics_;
    LinuxSystemValues systemValues_;
};

} // namespace cindertop::linux_platform
