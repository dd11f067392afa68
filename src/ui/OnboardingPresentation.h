#pragma once

#include "app/AppState.h"
#include "ui/ProgramActions.h"

#include <QObject>

namespace cindertop::ui {

/// What the onboarding window shows. Main thread.
class OnboardingPresentation : public QObject {
    Q_OBJECT

public:
    /// `state` must outlive this.
    OnboardingPresentation(AppState& state, ProgramActions actions);

private:
    AppState& state_;
    ProgramActions actions_;
};

} // namespace cindertop::ui
