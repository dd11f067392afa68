#pragma once

#include "support/Enumeration.h"

#include <array>

namespace cindertop {

/// How the score moved since the one before.
enum class ThermalTrend { stable, rising, cooling };

template <>
struct EnumerationTable<ThermalTrend> {
    static constexpr std::array cases{
        EnumerationCase{ThermalTrend::stable, "stable"},
        EnumerationCase{ThermalTrend::rising, "rising"},
        EnumerationCase{ThermalTrend::cooling, "cooling"},
    };
};

} // namespace cindertop
