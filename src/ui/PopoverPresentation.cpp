#include "ui/PopoverPresentation.h"

#include <utility>

namespace cindertop::ui {

PopoverPresentation::PopoverPresentation(AppState& state, ProgramActions actions)
    : state_(state), actions_(std::move(actions)) {}

} // namespace cindertop::ui
