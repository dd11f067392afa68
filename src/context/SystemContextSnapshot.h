#pragma once

#include "context/DisplayContextSnapshot.h"
#include "context/PowerContextSnapshot.h"
#include "context/SustainedThermalPressureSnapshot.h"
#include "support/Instant.h"

namespace cindertop {

/// The circumstances in which the machine runs hot.
struct SystemContextSnapshot { // NOLINT(cppcoreguidelines-pro-type-member-init): no part can be left out
    DisplayContextSnapshot displays;
    PowerContextSnapshot power;
    SustainedThermalPressureSnapshot sustainedPressure;
    Instant measuredAt;

    /// A context that has not been measured yet; its instant is the Unix epoch.
    static const SystemContextSnapshot& placeholder();

    bool operator==(const SystemContextSnapshot&) const = default;
};

} // namespace cindertop
