#pragma once

#include "support/Enumeration.h"

#include <array>

namespace cindertop {

/// What an alert tells. The raw value is part of the notification's identifier.
enum class ThermalAlertKind {
    sustainedThrottling, ///< pressure has become sustained
    critical,            ///< the level has reached critical
    recovery,            ///< sustained pressure has eased
};

template <>
struct EnumerationTable<ThermalAlertKind> {
    static constexpr std::array cases{
        EnumerationCase{ThermalAlertKind::sustainedThrottling, "sustainedThrottling"},
        EnumerationCase{ThermalAlertKind::critical, "critical"},
        EnumerationCase{ThermalAlertKind::recovery, "recovery"},
    };
};

} // namespace cindertop
