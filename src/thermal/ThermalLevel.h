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

/// The lowest level that may cause a notification, as the user chose it.
enum class NotificationMinimumLevel { serious, critical };

template <>
struct EnumerationTable<NotificationMinimumLevel> {
    static constexpr std::array cases{
        EnumerationCase{NotificationMinimumLevel::serious, "serious"},
        EnumerationCase{NotificationMinimumLevel::critical, "critical"},
    };
};

/// The word that people read, for example "Serious".
constexpr std::string_view label(NotificationMinimumLevel level) {
    return level == NotificationMinimumLevel::critical ? "Critical" : "Serious";
}

/// The level from which alerts are wanted.
constexpr ThermalLevel alertMinimumLevel(NotificationMinimumLevel level) {
    return level == NotificationMinimumLevel::critical ? ThermalLevel::critical : ThermalLevel::serious;
}

} // namespace cindertop
