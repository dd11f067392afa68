#include "ui/SettingsPresentation.h"

namespace cindertop::ui {

SettingsPresentation::SettingsPresentation(AppState& state, const ProgramActions& actions)
    : info_(state, actions), monitoring_(state, actions), cpu_(state, actions), system_(state, actions) {}

} // namespace cindertop::ui
