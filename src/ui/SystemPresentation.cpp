#include "ui/SystemPresentation.h"

#include <utility>

namespace cindertop::ui {

SystemPresentation::SystemPresentation(AppState& state, ProgramActions actions)
    : state_(state), actions_(std::move(actions)) {}

} // namespace cindertop::ui
