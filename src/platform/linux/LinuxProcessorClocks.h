#pragma once

#include "platform/ProcessorClocks.h"
#include "platform/linux/AttributeFile.h"
#include "platform/linux/DeviceFolder.h"
#include "platform/linux/FileReading.h"
#include "platform/linux/LinuxThermalPressureNotifications.h"
#include "platform/linux/SystemClock.h"

#include <filesystem>
#include <optional>
#include <vector>

namespace cindertop::linux_platform {

/// The limits of all cpufreq policies. Processors of different kinds have a policy a kind, and most x86
/// machines one a processor. Policies are listed again when one comes or goes, and every 30 s. Not
/// thread-safe.
class LinuxProcessorClocks final : public ProcessorClocks {
public:
    /// `throttling` must outlive this object; it tells whether heat is the reason.
    LinuxProcessorClocks(const Roots& roots, const MonotonicClock& clock,
                         LinuxThermalPressureNotifications& throttling);

    ProcessorClockReading read() override;

private:
    /// Frequencies in kHz, as the kernel has them.
    struct Policy {
        AttributeFile allowed;
        AttributeFile possible;
        AttributeFile firmwareLimit; ///< of the firmware's tables; few drivers have it

        explicit Policy(const std::filesystem::path& folder);

        /// `percent` is what a setting for all processors leaves.
        std::optional<ClockLimit> read(std::int64_t percent);
        bool isHeldByFirmware(const ClockLimit& clock);
    };

    void learnIfOutdated();

    DeviceFolder folder_;
    DeviceFolder processors_;
    AttributeFile percent_;
    LinuxThermalPressureNotifications& throttling_;
    std::vector<Policy> policies_;
};

} // namespace cindertop::linux_platform
