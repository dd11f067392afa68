#pragma once

#include "support/Enumeration.h"

#include <array>

namespace cindertop {

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

} // namespace cindertop
