#pragma once

#include "platform/HardwareMeters.h"
#include "platform/ProcessInformation.h"
#include "platform/ProcessorClocks.h"
#include "support/Enumeration.h"

#include <array>
#include <cstdint>
#include <optional>

namespace cindertop {

/// Why the processor may not run as fast as it could.
enum class HoldReason : std::uint8_t { heat, powerSaver, firmware, unknown };

template <>
struct EnumerationTable<HoldReason> {
    static constexpr std::array cases{
        EnumerationCase{HoldReason::heat, "heat"},
        EnumerationCase{HoldReason::powerSaver, "powerSaver"},
        EnumerationCase{HoldReason::firmware, "firmware"},
        EnumerationCase{HoldReason::unknown, "unknown"},
    };
};

/// Whether the processor is held back.
struct SpeedLimits {
    /// The clock that the text about it names: of the fastest processors, or of those that are held back
    /// where the fastest are not. Absent where no clock is known.
    std::optional<ClockLimit> clock{};
    bool isOfSomeCores = false;         ///< only slower processors are held back, and `clock` is theirs
    std::optional<HoldReason> heldBy{}; ///< none: not held back, as far as anything tells

    bool operator==(const SpeedLimits&) const = default;
};

/// What the hardware tells about power, speed and fans. A machine that tells none of it has an empty one.
struct HardwareContextSnapshot {
    MeterReadings meters{};
    SpeedLimits processor{};

    bool operator==(const HardwareContextSnapshot&) const = default;
};

/// A clock counts as held back from one hundredth on: drivers round, and some name a turbo clock 1 MHz above
/// the nominal one.
bool isHeldBack(const ClockLimit& clock);

/// What a reading means. Heat goes before the saver and the saver before the firmware: where several hold,
/// the first explains most to its owner.
SpeedLimits speedLimits(const ProcessorClockReading& reading, bool isSavingPower);

/// Answers what the hardware tells. Called from the engine thread.
class HardwareContextProvider {
public:
    /// All must outlive the provider; a null service tells nothing.
    HardwareContextProvider(HardwareMeters* meters, ProcessorClocks* clocks,
                            const ProcessInformation& process);

    HardwareContextSnapshot readHardwareContext() const;

private:
    HardwareMeters* meters_;
    ProcessorClocks* clocks_;
    const ProcessInformation& process_;
};

} // namespace cindertop
