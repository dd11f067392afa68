#include "platform/linux/MachineHeat.h"

#include <algorithm>
#include <utility>

namespace cindertop::linux_platform {

namespace {

constexpr MilliCelsius seriousHeadroom = milliCelsius(3);
constexpr MilliCelsius fairHeadroom = milliCelsius(10);

} // namespace

MachineHeat::MachineHeat(const Roots& roots, MonotonicClock clock, ThermalZones& zones)
    : clock_(std::move(clock)), zones_(zones), limits_(roots, clock_) {}

HeatReading MachineHeat::read() {
    const std::scoped_lock lock(mutex_);
    if (!readAt_.isRecent(clock_())) {
        reading_ = readAt_.around(clock_, [this] { return readAll(); });
    }
    return reading_;
}

SourceStatus MachineHeat::status() const {
    const std::scoped_lock lock(mutex_);
    auto status = zones_.status();
    if (!status.isAvailable && limits_.answering() > 0) {
        status.isAvailable = true;
        status.reason = "none, but the processor's own limit";
    }
    return status;
}

/// A cool processor alone makes no "nominal": its sensor knows nothing about the rest of the machine.
HeatReading MachineHeat::readAll() {
    const auto zones = zones_.read();
    const auto headroom = limits_.headroom();
    HeatReading reading{.state = zones.state,
                        .isAtLimit = zones.isAtLimit,
                        .isProcessorHot = headroom && *headroom <= fairHeadroom};
    if (reading.isProcessorHot) {
        reading.state = std::max(reading.state, *headroom <= seriousHeadroom ? 2 : 1);
    }
    return reading;
}

} // namespace cindertop::linux_platform
