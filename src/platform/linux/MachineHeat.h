#pragma once

#include "platform/SourceStatus.h"
#include "platform/linux/AttributeFile.h"
#include "platform/linux/DeviceFolder.h"
#include "platform/linux/FileReading.h"
#include "platform/linux/ReadingStamp.h"
#include "platform/linux/SystemClock.h"
#include "platform/linux/ThermalTrips.h"
#include "platform/linux/ThermalZones.h"

#include <cstddef>
#include <filesystem>
#include <mutex>
#include <optional>
#include <vector>

namespace cindertop::linux_platform {

/// How far the processors are below the temperature at which they slow themselves down, as their own sensors
/// tell: of each processor its package's, else that of its hottest core. Limits are cached and read again
/// when a device comes or goes, and every 30 s. Not thread-safe.
class ProcessorLimits {
public:
    ProcessorLimits(const Roots& roots, const MonotonicClock& clock);

    /// The smallest over the processors, below 0 beyond the limit; none when no sensor with a limit answers.
    std::optional<MilliCelsius> headroom();

    /// Processors that answered the latest question.
    std::size_t answering() const { return answering_; }

private:
    struct Sensor {
        AttributeFile temperature;
        MilliCelsius limit;

        std::optional<MilliCelsius> read();
    };

    struct Processor {
        std::vector<Sensor> packages; ///< one, or none on old processors
        std::vector<Sensor> cores;
    };

    void learnIfOutdated();
    static Processor learn(const std::filesystem::path& chip);
    static std::optional<MilliCelsius> headroomOfHottest(std::vector<Sensor>& sensors);

    DeviceFolder folder_;
    std::vector<Processor> processors_;
    std::size_t answering_ = 0;
};

/// How hot the machine is by the limits that its firmware and its processors set.
struct HeatReading {
    int state = -1;              ///< 0 nominal, 1 fair, 2 serious, 3 critical; -1 when nothing tells
    bool isAtLimit = false;      ///< a hot trip that acts is crossed or a critical one at most 3 °C away
    bool isProcessorHot = false; ///< a processor is within 10 °C of where it slows itself down

    bool operator==(const HeatReading&) const = default;
};

/// The thermal state of the machine: what its zones say, and how close its processors are to slowing
/// themselves down. Any thread may call.
class MachineHeat {
public:
    /// `zones` must outlive this object.
    MachineHeat(const Roots& roots, MonotonicClock clock, ThermalZones& zones);

    /// A recent reading is returned again.
    HeatReading read();

    SourceStatus status() const;

private:
    HeatReading readAll();

    mutable std::mutex mutex_;
    MonotonicClock clock_;
    ThermalZones& zones_;
    ProcessorLimits limits_;
    ReadingStamp readAt_;
    HeatReading reading_;
};

} // namespace cindertop::linux_platform
