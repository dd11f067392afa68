#include "ui/MonitoringPresentation.h"

#include <utility>

namespace cindertop::ui {

MonitoringPresentation::MonitoringPresentation(AppState& state, ProgramActions actions)
    : state_(state), actions_(std::move(actions)) {}

} // namespace cindertop::ui
