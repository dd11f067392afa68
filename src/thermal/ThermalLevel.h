#pragma once

#include "support/Enumeration.h"

#include <array>
#include <string_view>

namespace cindertop {

/// How hot the machine is, in the four steps of the whole product. Ordered: `normal` is the least.
enum class ThermalLevel : int { normal, fair, serious, critical };

/// The raw value is what the history file stores.
template <>
struct EnumerationTable<ThermalLevel> {
    static constexpr std::array cases{
        EnumerationCase{ThermalLevel::normal, "normal", 0},
        EnumerationCase{ThermalLevel::fair, "fair", 1},
        EnumerationCase{ThermalLevel::serious, "serious", 2},
        EnumerationCase{ThermalLevel::critical, "critical", 3},
    };
};

/// The word that people read, for example "Serious".
constexpr std::string_view label(ThermalLevel level) {
    switch (level) {
    case ThermalLevel::normal:
        return "Normal";
    case ThermalLevel::fair:
        return "Fair";
    case ThermalLevel::serious:
        return "Serious";
    case ThermalLevel::critical:
        return "Critical";
    }
    return {};
}

} // namespace cindertop
