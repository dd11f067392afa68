#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace cindertop::linux_platform {

/// Thousandths of a degree Celsius, as the kernel counts.
using MilliCelsius = std::int64_t;

enum class TripKind { passive, active, hot, critical };

/// The kind that `trip_point_N_type` names; none for any other text ("active0" and "active1" are the same
/// kind).
std::optional<TripKind> parseTripKind(std::string_view text);

struct Trip {
    TripKind kind;
    MilliCelsius temperature;

    bool operator==(const Trip&) const = default;
};

/// What the trips of one zone ask for: of each kind the lowest. Placeholders are left out.
struct TripPoints {
    std::optional<MilliCelsius> passive;
    std::optional<MilliCelsius> active;
    std::optional<MilliCelsius> hot;
    std::optional<MilliCelsius> critical;

    /// Firmware fills unused trips with 0 K, 0 °C, or something beyond any silicon: those do not count.
    static TripPoints of(std::span<const Trip> trips);

    bool areEmpty() const { return !passive && !active && !hot && !critical; }

    bool operator==(const TripPoints&) const = default;
};

/// 0 nominal, 1 fair, 2 serious, 3 critical.
int thermalStateOf(const TripPoints& points, MilliCelsius temperature);

/// The hardware is about to save itself: a hot trip is crossed or a critical one is at most 3 °C away.
bool isAtLimit(const TripPoints& points, MilliCelsius temperature);

/// A reading that a machine at work can have; firmware without an answer says 0 K or another extreme.
bool isPlausible(MilliCelsius temperature);

/// Whether a zone of this type speaks for the machine's own heat. Batteries, radios, drives and network parts
/// have limits of their own, and the trips of `x86_pkg_temp` are thresholds that programs set.
bool hasMachineTrips(std::string_view zoneType);

} // namespace cindertop::linux_platform
