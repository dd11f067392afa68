#include "context/HardwareText.h"

#include <array>
#include <charconv>
#include <cmath>
#include <string_view>

namespace cindertop {

namespace {

std::string fixedNumber(double value, int decimals) {
    std::array<char, 400> buffer{}; // the largest double has 309 digits before the point
    const auto end =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed, decimals)
            .ptr;
    return {buffer.data(), end};
}

/// One decimal, or two where one would show both numbers alike.
std::string clockText(const ClockLimit& clock) {
    constexpr double gigahertz = 1e9;
    const auto pair = [&](int decimals) {
        return std::array{fixedNumber(static_cast<double>(clock.allowedHertz) / gigahertz, decimals),
                          fixedNumber(static_cast<double>(clock.possibleHertz) / gigahertz, decimals)};
    };
    auto [allowed, possible] = pair(1);
    if (allowed == possible) {
        auto finer = pair(2);
        allowed = std::move(finer[0]);
        possible = std::move(finer[1]);
    }
    return allowed + " of " + possible + " GHz";
}

std::string_view reasonText(HoldReason reason) {
    switch (reason) {
    case HoldReason::heat:
        return " by heat";
    case HoldReason::powerSaver:
        return " by the power saver";
    case HoldReason::firmware:
        return " by the firmware";
    case HoldReason::unknown:
        break;
    }
    return "";
}

} // namespace

std::string wattsText(double watts) {
    constexpr double firstWhole = 19.95; // would read "20.0"
    return fixedNumber(watts, std::abs(watts) < firstWhole ? 1 : 0) + " W";
}

std::optional<std::string> powerFlowText(const SystemContextSnapshot& context) {
    const auto& battery = context.power.batteryWatts;
    const auto& machine = context.hardware.meters.machineWatts;
    if (battery && *battery < 0 && context.power.isExternalPowerConnected()) { // the adapter is too weak
        return (machine ? "Drawing " + wattsText(*machine) + ", " : std::string()) + wattsText(-*battery) +
               " from the battery";
    }
    if (battery && *battery < 0) {
        return "Drawing " + wattsText(-*battery);
    }
    if (battery) {
        return "Charging with " + wattsText(*battery) + (machine ? ", drawing " + wattsText(*machine) : "");
    }
    return machine.transform([](double watts) { return "Drawing " + wattsText(watts); });
}

std::optional<std::string> heldBackText(const SpeedLimits& limits) {
    if (!limits.heldBy) {
        return std::nullopt;
    }
    const auto reason = std::string(reasonText(*limits.heldBy));
    if (!limits.clock || !isHeldBack(*limits.clock)) {
        return "Processor slowed down" + reason;
    }
    return (limits.isOfSomeCores ? "Slower cores held to " : "Processor held to ") +
           clockText(*limits.clock) + reason;
}

std::string fanSpeedText(const FanReading& fan) {
    return fan.revolutionsPerMinute == 0 ? "stopped" : std::to_string(fan.revolutionsPerMinute) + " rpm";
}

} // namespace cindertop
