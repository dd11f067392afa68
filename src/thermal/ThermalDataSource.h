#pragma once

#include "support/Enumeration.h"

#include <array>

namespace cindertop {

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

} // namespace cindertop
