#pragma once

#include "support/Enumeration.h"

#include <array>
#include <cstdint>
#include <string_view>

namespace cindertop {

/// What stands beside the status item's icon. The last two are retired: no record of settings holds them.
enum class MenuBarInfoMode : std::uint8_t {
    none,
    thermalStatus,
    temperature,
    thermalScore,
    compactAlertOnly
};

template <>
struct EnumerationTable<MenuBarInfoMode> {
    static constexpr std::array cases{
        EnumerationCase{MenuBarInfoMode::none, "none"},
        EnumerationCase{MenuBarInfoMode::thermalStatus, "thermalStatus"},
        EnumerationCase{MenuBarInfoMode::temperature, "temperature"},
        EnumerationCase{MenuBarInfoMode::thermalScore, "thermalScore"},
        EnumerationCase{MenuBarInfoMode::compactAlertOnly, "compactAlertOnly"},
    };
};

/// What people read, for example "Icon Only".
constexpr std::string_view label(MenuBarInfoMode mode) {
    switch (mode) {
    case MenuBarInfoMode::none:
        return "Icon Only";
    case MenuBarInfoMode::thermalStatus:
        return "Thermal Status";
    case MenuBarInfoMode::temperature:
        return "Temperature";
    case MenuBarInfoMode::thermalScore:
        return "Thermal Score";
    case MenuBarInfoMode::compactAlertOnly:
        return "Alerts Only";
    }
    return {};
}

} // namespace cindertop
