#include "ui/CPUPresentation.h"

#include <utility>

namespace cindertop::ui {

CPUPresentation::CPUPresentation(AppState& state, ProgramActions actions)
    : state_(state), actions_(std::move(actions)) {}

} // namespace cindertop::ui
