#include "ui/InfoPresentation.h"

#include <utility>

namespace cindertop::ui {

InfoPresentation::InfoPresentation(AppState& state, ProgramActions actions)
    : state_(state), actions_(std::move(actions)) {}

} // namespace cindertop::ui
