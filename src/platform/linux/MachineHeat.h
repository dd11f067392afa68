#pragma once

#include "platform/SourceStatus.h"
#include "platform/linux/MonotonicClock.h"
#include "platform/linux/ProcessorLimits.h"
#include "platform/linux/ReadingStamp.h"
#include "platform/linux/Roots.h"
#include "platform/linux/ThermalZones.h"

#include <mutex>

namespace cindertop::linux_platform {

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

    /// A reading that is still recent is told again.
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
