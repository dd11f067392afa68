#pragma once

#include <array>

namespace cindertop::ui {

/// The tabs of the settings window, in their order from the left.
enum class SettingsTab { thermal, monitoring, cpu, system };

struct SettingsTabDisplay {
    const char* title;
    const char* symbolName;
};

/// By the tab's raw value.
inline constexpr std::array settingsTabs{
    SettingsTabDisplay{"Info", "info.circle"},
    SettingsTabDisplay{"Monitoring", "chart.xyaxis.line"},
    SettingsTabDisplay{"CPU", "cpu"},
    SettingsTabDisplay{"System", "gearshape"},
};

} // namespace cindertop::ui
