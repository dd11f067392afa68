#pragma once

#include "platform/HardwareMeters.h"
#include "platform/linux/AttributeFile.h"
#include "platform/linux/DeviceFolder.h"
#include "platform/linux/FileReading.h"
#include "platform/linux/HwmonSensors.h"
#include "platform/linux/SystemClock.h"

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cindertop::linux_platform {

/// The fans and the power meters of all hwmon chips. Power: the whole machine's where firmware tells it, and
/// what a graphics chip consumes by its own account; what a supply copies to hwmon is the battery's and is
/// left out. Chips are looked through again when one comes or goes, and every 30 s. Not thread-safe.
///
/// While nobody looks, all are read every 30 s at most, because some firmware takes milliseconds for a fan.
class LinuxHardwareMeters final : public HardwareMeters {
public:
    /// `devices` are shared with whoever else reads these chips.
    LinuxHardwareMeters(const Roots& roots, MonotonicClock clock, std::shared_ptr<SensorDevices> devices);

    void setObserved(bool isObserved) override { isObserved_ = isObserved; }

    MeterReadings read() override;

private:
    enum class Kind { fan, machine, chip };

    struct Meter {
        Kind kind;
        std::string name;
        AttributeFile file;
        std::shared_ptr<SensorDevice> device;
        bool mayBeBare;                       ///< perhaps a connector without a fan
        bool hasTurned = false;               ///< or answered anything but 0
        std::optional<std::int64_t> latest{}; ///< rpm or µW
        std::optional<std::chrono::nanoseconds> readAt{};
    };

    void learnIfOutdated();
    void learnChip(const std::filesystem::path& chip, std::vector<Meter>& found) const;
    void keepFormerRead(Meter& meter) const;
    std::optional<std::int64_t> ask(Meter& meter);
    MeterReadings readAll();

    MonotonicClock clock_;
    std::shared_ptr<SensorDevices> devices_;
    DeviceFolder folder_;
    std::vector<Meter> meters_;
    bool isObserved_ = false;
    std::optional<std::chrono::nanoseconds> readAt_;
    MeterReadings latest_;
};

} // namespace cindertop::linux_platform
