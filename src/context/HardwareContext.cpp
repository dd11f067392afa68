#include "context/HardwareContext.h"

namespace cindertop {

namespace {

HoldReason reasonFor(const ProcessorClockReading& reading, bool isSavingPower) {
    if (reading.isSlowedByHeat.value_or(false)) {
        return HoldReason::heat;
    }
    if (isSavingPower) {
        return HoldReason::powerSaver;
    }
    return reading.isHeldByFirmware ? HoldReason::firmware : HoldReason::unknown;
}

} // namespace

bool isHeldBack(const ClockLimit& clock) {
    constexpr double leastHeld = 0.99;
    return static_cast<double>(clock.allowedHertz) < static_cast<double>(clock.possibleHertz) * leastHeld;
}

SpeedLimits speedLimits(const ProcessorClockReading& reading, bool isSavingPower) {
    const auto isHeld = [](const std::optional<ClockLimit>& clock) { return clock && isHeldBack(*clock); };
    const bool areSomeHeld = !isHeld(reading.clock) && isHeld(reading.mostHeld);
    const bool isAnyHeld = areSomeHeld || isHeld(reading.clock);
    SpeedLimits limits{
        .clock = areSomeHeld ? reading.mostHeld : reading.clock, .isOfSomeCores = areSomeHeld, .heldBy = {}};
    if (isAnyHeld || reading.isSlowedByHeat.value_or(false)) {
        limits.heldBy = reasonFor(reading, isSavingPower);
    }
    return limits;
}

HardwareContextProvider::HardwareContextProvider(HardwareMeters* meters, ProcessorClocks* clocks,
                                                 const ProcessInformation& process)
    : meters_(meters), clocks_(clocks), process_(process) {}

HardwareContextSnapshot HardwareContextProvider::readHardwareContext() const {
    HardwareContextSnapshot snapshot;
    if (meters_ != nullptr) {
        snapshot.meters = meters_->read();
    }
    if (clocks_ != nullptr) {
        snapshot.processor = speedLimits(clocks_->read(), process_.isLowPowerModeEnabled());
    }
    return snapshot;
}

} // namespace cindertop
