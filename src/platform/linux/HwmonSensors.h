#pragma once

#include "platform/SourceStatus.h"
#include "platform/TemperatureEvents.h"
#include "platform/linux/AttributeFile.h"
#include "platform/linux/DeviceFolder.h"
#include "platform/linux/FileReading.h"
#include "platform/linux/SensorNames.h"
#include "platform/linux/SystemClock.h"
#include "platform/linux/ThermalZones.h"

#include <chrono>
#include <filesystem>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace cindertop::linux_platform {

struct FoundSensor;

/// The hardware of a chip, shared by the sensors on it. A read wakes a device that sleeps, and one that the
/// kernel sends to sleep after a time without use restarts that time with each read. Not thread-safe.
class SensorDevice {
public:
    /// `power` is the device's folder of that name.
    explicit SensorDevice(const std::filesystem::path& power);

    const std::filesystem::path& power() const { return power_; }

    bool isAwake(std::chrono::nanoseconds now);

    /// Whether a read now leaves the device time to fall asleep since the reads before. All sensors of the
    /// device are due together.
    bool isDue(std::chrono::nanoseconds now);

    void wasRead(std::chrono::nanoseconds now) { readAt_ = now; }

private:
    void ask(std::chrono::nanoseconds now);
    std::chrono::nanoseconds timeToFallAsleep();

    std::filesystem::path power_;
    AttributeFile status_;
    AttributeFile control_;
    AttributeFile delay_;
    std::optional<std::chrono::nanoseconds> askedAt_;
    bool isAwake_ = false;
    std::chrono::nanoseconds rest_{0}; ///< between two reads; 0: it does not fall asleep by itself
    std::optional<std::chrono::nanoseconds> readAt_;
};

/// The hardware of all chips, each once: what reads temperatures and what reads fans must agree on when it
/// was read, or together they keep it awake. Not thread-safe.
class SensorDevices {
public:
    std::shared_ptr<SensorDevice> at(const std::filesystem::path& power);

private:
    std::map<std::filesystem::path, std::weak_ptr<SensorDevice>> known_;
};

/// All temperature sensors of the machine: hwmon chips, thermal zones, power supplies, each thing once. Names
/// are cached and read again when a device comes or goes, and every 30 s. Any thread may call.
class HwmonSensors {
public:
    /// One sensor of a list, to be read by `celsius`. When its device goes away it has no answer.
    struct Sensor;
    using SensorList = std::vector<std::shared_ptr<Sensor>>;

    /// `zones` must outlive this object.
    HwmonSensors(const Roots& roots, MonotonicClock clock, ThermalZones& zones,
                 std::shared_ptr<SensorDevices> devices = std::make_shared<SensorDevices>());
    ~HwmonSensors();
    HwmonSensors(const HwmonSensors&) = delete;
    HwmonSensors& operator=(const HwmonSensors&) = delete;

    /// A temperature and how old it is.
    struct Temperature {
        double celsius;
        std::chrono::nanoseconds age; ///< 0 for one that was just read
        TemperatureLimits limits{};
    };

    /// Storage is listed only while the list is being shown: each read sends the drive a command.
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
    /// Those of a chip stay as they were first read.
    TemperatureLimits limitsOf(const FoundSensor& sensor);
    bool canBeAsked(const Sensor& sensor) const;
    bool isDue(const Sensor& sensor) const;
    void read(Sensor& sensor) const;
    void keepFormerRead(Sensor& sensor) const;

    mutable std::mutex mutex_;
    Roots roots_;
    MonotonicClock clock_;
    ThermalZones& zones_;
    std::shared_ptr<SensorDevices> devices_;
    DeviceFolder chipFolder_;
    DeviceFolder zoneFolder_;
    DeviceFolder supplyFolder_;
    bool isLearnt_ = false;
    bool isObserved_ = false;
    SensorList sensors_;
};

} // namespace cindertop::linux_platform
