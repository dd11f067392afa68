#pragma once

#include "support/Enumeration.h"

#include <array>
#include <string_view>

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

} // namespace cindertop
