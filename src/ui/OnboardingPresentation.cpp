#include "ui/OnboardingPresentation.h"

#include <utility>

namespace cindertop::ui {

OnboardingPresentation::OnboardingPresentation(AppState& state, ProgramActions actions)
    : state_(state), actions_(std::move(actions)) {}

} // namespace cindertop::ui
