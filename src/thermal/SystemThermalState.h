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

} // namespace cindertop
