#pragma once

#include "support/Enumeration.h"

#include <array>

namespace cindertop {

/// What the machine runs on.
enum class PowerSourceKind { acPower, batteryPower, upsPower, offline, unknown };

template <>
struct EnumerationTable<PowerSourceKind> {
    static constexpr std::array cases{
        EnumerationCase{PowerSourceKind::acPower, "acPower"},
        EnumerationCase{PowerSourceKind::batteryPower, "batteryPower"},
        EnumerationCase{PowerSourceKind::upsPower, "upsPower"},
        EnumerationCase{PowerSourceKind::offline, "offline"},
        EnumerationCase{PowerSourceKind::unknown, "unknown"},
    };
};

} // namespace cindertop
