#pragma once

#include "platform/SourceStatus.h"
#include "platform/linux/AttributeFile.h"
#include "platform/linux/DeviceFolder.h"
#include "platform/linux/MonotonicClock.h"
#include "platform/linux/Roots.h"
#include "platform/linux/SensorProducts.h"
#include "platform/linux/ThermalZones.h"

#include <chrono>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace cindertop::linux_platform {

/// All temperature sensors of the machine: hwmon chips, thermal zones, power supplies, each thing once. Names
/// are kept and learnt anew when a device comes or goes, and every 30 s. Any thread may call.
class HwmonSensors {
public:
    /// One sensor of a list, to be read by `celsius`. When its device goes away it has no answer.
    struct Sensor;
    using SensorList = std::vector<std::shared_ptr<Sensor>>;

    /// `zones` must outlive this object.
    HwmonSensors(const Roots& roots, MonotonicClock clock, ThermalZones& zones);
    ~HwmonSensors();
    HwmonSensors(const HwmonSensors&) = delete;
    HwmonSensors& operator=(const HwmonSensors&) = delete;

    /// The sensors that may be read now. Sleeping devices are left out, because a read would wake them, and
    /// so is storage for 30 s after a read, because each read sends the drive a command.
    SensorList list();

    /// What the sensor is, in words that tell its kind: "CPU Core 3".
    static const std::string& product(const Sensor& sensor);

    /// Degrees Celsius; none when there is no answer, the device sleeps, or it is storage read less than 30 s
    /// ago.
    std::optional<double> celsius(Sensor& sensor);

    /// How many sensors there are and how many of them answered when they were last read.
    SourceStatus status() const;

private:
    class Device;

    void learnIfOutdated();
    void learn();
    bool isAwake(const Sensor& sensor) const;
    bool isResting(const Sensor& sensor) const;
    void keepFormerRead(Sensor& sensor) const;

    mutable std::mutex mutex_;
    Roots roots_;
    MonotonicClock clock_;
    ThermalZones& zones_;
    DeviceFolder chipFolder_;
    DeviceFolder zoneFolder_;
    DeviceFolder supplyFolder_;
    bool isLearnt_ = false;
    SensorList sensors_;
};

} // namespace cindertop::linux_platform
