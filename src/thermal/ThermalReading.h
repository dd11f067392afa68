#pragma once

#include "platform/TemperatureEvents.h"
#include "support/Enumeration.h"
#include "support/Instant.h"

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace cindertop {

/// What a temperature sensor sits on.
enum class ThermalSensorKind { cpu, gpu, battery, storage, power, other };

template <>
struct EnumerationTable<ThermalSensorKind> {
    static constexpr std::array cases{
        EnumerationCase{ThermalSensorKind::cpu, "cpu"},
        EnumerationCase{ThermalSensorKind::gpu, "gpu"},
        EnumerationCase{ThermalSensorKind::battery, "battery"},
        EnumerationCase{ThermalSensorKind::storage, "storage"},
        EnumerationCase{ThermalSensorKind::power, "power"},
        EnumerationCase{ThermalSensorKind::other, "other"},
    };
};

/// The kind that a sensor's name suggests, upper and lower case alike: "GPU core" is `gpu`, "Ambient" is
/// `other`.
ThermalSensorKind inferred(std::string_view name);

/// Whether sensors of this kind tell how hot processor and graphics are: battery, storage and power parts
/// warm up for reasons of their own.
constexpr bool tellsProcessorHeat(ThermalSensorKind kind) {
    return kind == ThermalSensorKind::cpu || kind == ThermalSensorKind::gpu ||
           kind == ThermalSensorKind::other;
}

/// The lowest and the highest temperature of a time, in degrees Celsius.
struct TemperatureRange {
    double lowest = 0;
    double highest = 0;

    bool operator==(const TemperatureRange&) const = default;
};

/// One sensor temperature.
struct TemperatureReading {
    std::string id;    ///< the sensor's name; two sensors may share one
    std::string label; ///< the name shown to people
    double celsius;
    ThermalSensorKind kind;
    Seconds age{0}; ///< above 0 for a sensor that must not be read often
    TemperatureLimits limits{};
    std::optional<TemperatureRange> range{}; ///< since the start, where somebody has followed it

    /// From -40 to 130 degrees: what lies outside, or is no number, is a broken sensor.
    constexpr bool isPlausible() const { return celsius >= -40 && celsius <= 130; }

    bool operator==(const TemperatureReading&) const = default;
};

/// The coarse thermal state that the system reports to a process; `unavailable` when it reports none that is
/// known.
enum class SystemThermalState { nominal, fair, serious, critical, unavailable };

template <>
struct EnumerationTable<SystemThermalState> {
    static constexpr std::array cases{
        EnumerationCase{SystemThermalState::nominal, "nominal"},
        EnumerationCase{SystemThermalState::fair, "fair"},
        EnumerationCase{SystemThermalState::serious, "serious"},
        EnumerationCase{SystemThermalState::critical, "critical"},
        EnumerationCase{SystemThermalState::unavailable, "unavailable"},
    };
};

/// The state of the number that the system reports to a process.
constexpr SystemThermalState fromProcessState(int state) {
    switch (state) {
    case 0:
        return SystemThermalState::nominal;
    case 1:
        return SystemThermalState::fair;
    case 2:
        return SystemThermalState::serious;
    case 3:
        return SystemThermalState::critical;
    default:
        return SystemThermalState::unavailable;
    }
}

/// How strongly the system holds its processors back because of heat.
enum class ThermalPressureLevel { nominal, moderate, heavy, critical, unavailable };

template <>
struct EnumerationTable<ThermalPressureLevel> {
    static constexpr std::array cases{
        EnumerationCase{ThermalPressureLevel::nominal, "nominal"},
        EnumerationCase{ThermalPressureLevel::moderate, "moderate"},
        EnumerationCase{ThermalPressureLevel::heavy, "heavy"},
        EnumerationCase{ThermalPressureLevel::critical, "critical"},
        EnumerationCase{ThermalPressureLevel::unavailable, "unavailable"},
    };
};

/// The level of a raw notification state. The two most severe states, 3 and 4, are both `critical`; larger
/// ones are `unavailable`.
constexpr ThermalPressureLevel fromDarwinState(std::uint64_t darwinState) {
    switch (darwinState) {
    case 0:
        return ThermalPressureLevel::nominal;
    case 1:
        return ThermalPressureLevel::moderate;
    case 2:
        return ThermalPressureLevel::heavy;
    case 3:
    case 4:
        return ThermalPressureLevel::critical;
    default:
        return ThermalPressureLevel::unavailable;
    }
}

/// Where the thermal information of a reading comes from.
enum class ThermalDataSource {
    official,    ///< the system's state and pressure, no sensor temperatures
    betaSensors, ///< sensor temperatures only
    mixed,       ///< both
    unavailable, ///< nothing usable
};

template <>
struct EnumerationTable<ThermalDataSource> {
    static constexpr std::array cases{
        EnumerationCase{ThermalDataSource::official, "official"},
        EnumerationCase{ThermalDataSource::betaSensors, "betaSensors"},
        EnumerationCase{ThermalDataSource::mixed, "mixed"},
        EnumerationCase{ThermalDataSource::unavailable, "unavailable"},
    };
};

/// One raw thermal sample, before scoring.
struct ThermalReading {
    SystemThermalState systemState;
    ThermalPressureLevel pressureLevel;
    std::vector<TemperatureReading> temperatures; ///< in the order in which they were gathered
    ThermalDataSource dataSource;
    Instant measuredAt;

    /// This reading with the plausible ones of the given temperatures behind its own. Without a plausible one
    /// it is unchanged, its data source included.
    ThermalReading merging(std::span<const TemperatureReading> added) const;

    bool operator==(const ThermalReading&) const = default;
};

} // namespace cindertop
