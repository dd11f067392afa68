#pragma once

#include "support/Enumeration.h"
#include "thermal/ThermalLevel.h"

#include <array>
#include <string_view>

namespace cindertop {

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
