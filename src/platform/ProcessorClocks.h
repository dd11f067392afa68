#pragma once

#include <cstdint>
#include <optional>

namespace cindertop {

/// The clock that some processors may reach now, and the highest that they could.
struct ClockLimit {
    std::int64_t allowedHertz = 0;  ///< at most `possibleHertz`
    std::int64_t possibleHertz = 0; ///< above 0

    bool operator==(const ClockLimit&) const = default;
};

/// How fast the processor may run. The clock at which it does run is left out: it is low whenever there is
/// nothing to do, and asking for it can wake a core.
struct ProcessorClockReading {
    /// Of the fastest processors: the highest allowed clock of all against the highest possible of all.
    std::optional<ClockLimit> clock{};
    /// Of those processors whose clock is cut most.
    std::optional<ClockLimit> mostHeld{};
    std::optional<bool> isSlowedByHeat{}; ///< by its clock or otherwise; none where nothing tells
    bool isHeldByFirmware = false;        ///< the firmware sets the limit, for whatever reason

    bool operator==(const ProcessorClockReading&) const = default;
};

/// Asked from one thread at a time.
class ProcessorClocks {
public:
    virtual ~ProcessorClocks() = default;

    /// Never fails: what cannot be read is absent.
    virtual ProcessorClockReading read() = 0;
};

} // namespace cindertop
