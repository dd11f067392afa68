#include "ui/presentation/SystemTexts.h"

#include "support/Wording.h"
#include "ui/presentation/QtText.h"

#include <array>

namespace cindertop::ui {

namespace {

struct SystemTextRow {
    QString SystemTexts::* field = nullptr;
    Wording wording;
};

constexpr std::array systemTextRows{
    SystemTextRow{&SystemTexts::infoTitle, {"Menu Bar Info", "Panel Info"}},
    SystemTextRow{
        &SystemTexts::infoHelp,
        {"Choose which thermal label appears next to the menu bar icon. Icon Only keeps the menu bar "
         "narrow.",
         "Choose which thermal label appears next to the icon, in panels that show labels. Icon Only "
         "keeps the panel narrow."}},
    SystemTextRow{&SystemTexts::loginTitle, {"Launch at Login", "Start at Login"}},
    SystemTextRow{&SystemTexts::dockTitle, {"Show in Dock", "Show in Task Bar"}},
    SystemTextRow{&SystemTexts::dockHelp,
                  {"Shows Cindertop in the Dock as well as the menu bar.",
                   "Keeps an entry in the task bar while no window of Cindertop is open. Open windows are "
                   "always there."}},
    SystemTextRow{
        &SystemTexts::notificationsHelp,
        {"Allows quiet macOS notifications when Cindertop sees serious, critical thermal pressure, or "
         "recovery.",
         "Allows quiet notifications when Cindertop sees serious, critical thermal pressure, or "
         "recovery."}},
    SystemTextRow{&SystemTexts::chipTitle, {"SoC Temperature", "Chip Temperature"}},
    SystemTextRow{
        &SystemTexts::chipHelp,
        {"Reads additional SoC (Apple Silicon chip) temperature data when available. Values may vary "
         "by Mac model.",
         "Reads the temperature sensors of processor and graphics when available. Values may vary by "
         "model."}},
    SystemTextRow{&SystemTexts::resetHelp,
                  {"Restores Cindertop preferences and Launch at Login to factory defaults",
                   "Restores Cindertop preferences and Start at Login to factory defaults"}},
};

} // namespace

SystemTexts SystemTexts::in(OperatingSystem system) {
    SystemTexts texts;
    for (const auto& row : systemTextRows) {
        texts.*row.field = qtText(row.wording.in(system));
    }
    return texts;
}

} // namespace cindertop::ui
