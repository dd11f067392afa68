#pragma once

#include "platform/SourceStatus.h"
#include "platform/linux/AttributeFile.h"
#include "platform/linux/DeviceFolder.h"
#include "platform/linux/MonotonicClock.h"
#include "platform/linux/Roots.h"
#include "platform/linux/SensorDevice.h"
#include "platform/linux/SensorProducts.h"
#include "platform/linux/ThermalZones.h"

#include <chrono>
#include <filesystem>
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

    /// A temperature and how old it is.
    struct Temperature {
        double celsius;
        std::chrono::nanoseconds age; ///< 0 for one that was just read
    };

    /// Storage is listed only while somebody looks at the list: each read sends the drive a command.
    void setObserved(bool isObserved);

    /// The sensors that can be asked now. Sleeping devices are left out, because a read would wake them.
    SensorList list();

    /// What the sensor is, in words that tell its kind: "CPU Core 3".
    static const std::string& product(const Sensor& sensor);

    /// None when there is no answer or the device sleeps. Storage is read every 30 s at most, and an awake
    /// device that would fall asleep without the reads as seldom as that takes; in between, their latest
    /// answer is told.
    std::optional<Temperature> temperature(Sensor& sensor);

    /// How many sensors there are and how many of them answered when they were last read; without storage
    /// that was never read.
    SourceStatus status() const;

private:
    void learnIfOutdated();
    void learn();
    std::shared_ptr<SensorDevice> deviceAt(const std::filesystem::path& power,
                                           const SensorList& latest) const;
    bool canBeAsked(const Sensor& sensor) const;
    bool isDue(const Sensor& sensor) const;
    void read(Sensor& sensor) const;
    void keepFormerRead(Sensor& sensor) const;

    mutable std::mutex mutex_;
    Roots roots_;
    MonotonicClock clock_;
    ThermalZones& zones_;
    DeviceFolder chipFolder_;
    DeviceFolder zoneFolder_;
    DeviceFolder supplyFolder_;
    bool isLearnt_ = false;
    bool isObserved_ = false;
    SensorList sensors_;
};

} // namespace cindertop::linux_platform
