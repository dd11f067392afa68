#pragma once

#include "platform/linux/AttributeFile.h"
#include "platform/linux/DeviceFolder.h"
#include "platform/linux/MonotonicClock.h"
#include "platform/linux/Roots.h"
#include "platform/linux/ThermalTrips.h"

#include <cstddef>
#include <filesystem>
#include <optional>
#include <vector>

namespace cindertop::linux_platform {

/// How far the processors are below the temperature at which they slow themselves down, as their own sensors
/// tell: of each processor its package's, else that of its hottest core. Limits are kept and learnt anew when
/// a device comes or goes, and every 30 s. Not thread-safe.
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

} // namespace cindertop::linux_platform
