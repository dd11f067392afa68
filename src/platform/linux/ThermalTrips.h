#pragma once

#include "platform/TemperatureEvents.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace cindertop::linux_platform {

/// Thousandths of a degree Celsius, as the kernel counts.
using MilliCelsius = std::int64_t;

constexpr MilliCelsius milliCelsius(int celsius) {
    return 1000 * static_cast<MilliCelsius>(celsius);
}

enum class TripKind { passive, hot, critical };

/// The kind that `trip_point_N_type` names. None for "active" and any other text: active trips switch fans
/// and say nothing about heat.
std::optional<TripKind> parseTripKind(std::string_view text);

struct Trip {
    TripKind kind{};
    MilliCelsius temperature{};
    bool isBound = false; ///< a cooling device slows processors down there

    bool operator==(const Trip&) const = default;
};

/// What the kernel says about one zone.
struct ZoneTrips {
    std::string_view type;       ///< "acpitz", "cpu-thermal", ...
    std::string_view policy;     ///< the governor: "step_wise", "power_allocator", "user_space", ...
    std::span<const Trip> trips; ///< in the order of their numbers
    std::optional<MilliCelsius> firmwareLimit =
        std::nullopt; ///< where the board's firmware slows the processor down by itself
};

/// From which temperatures on a zone gives a thermal state. Absent: it never gives that state.
struct HeatThresholds {
    std::optional<MilliCelsius> fair;
    std::optional<MilliCelsius> serious;
    std::optional<MilliCelsius> critical;
    std::optional<MilliCelsius> limit; ///< the machine is about to save itself

    /// Without those of trips that are none: firmware fills unused ones with 0 K, 0 °C, or something beyond
    /// any silicon, and some boards put "critical" at room temperature.
    static HeatThresholds of(const ZoneTrips& zone);

    /// The zone has no usable trip.
    bool areEmpty() const { return !fair && !serious && !critical; }

    bool operator==(const HeatThresholds&) const = default;
};

/// Where the kernel slows processors down for a zone, and where it switches the machine off.
TemperatureLimits limitsOf(const ZoneTrips& zone);

/// In degrees; none for what is no limit of a machine: 0, or something beyond any silicon.
std::optional<double> usableLimit(MilliCelsius limit);

/// 0 nominal, 1 fair, 2 serious, 3 critical.
int thermalStateOf(const HeatThresholds& thresholds, MilliCelsius temperature);

/// A hot trip that acts is crossed, or a critical one is at most 3 °C away.
bool isAtLimit(const HeatThresholds& thresholds, MilliCelsius temperature);

/// A reading that a machine at work can have; firmware without an answer says 0 K or another extreme.
bool isPlausible(MilliCelsius temperature);

/// Whether a zone of this type speaks for the machine's own heat. Batteries, radios, drives and network parts
/// have limits of their own, and the trips of `x86_pkg_temp` and `TCPU_PCI` are thresholds that programs set.
bool hasMachineTrips(std::string_view zoneType);

/// Where the firmware of a board slows the processor down below every trip that the kernel knows, by the
/// board's device tree. None for boards that are not known to do so.
std::optional<MilliCelsius> firmwareLimit(const std::vector<std::string>& compatible);

} // namespace cindertop::linux_platform
