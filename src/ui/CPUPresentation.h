#pragma once

#include "app/AppState.h"
#include "ui/ProgramActions.h"

#include <QObject>

namespace cindertop::ui {

/// What the settings window's CPU tab shows. Main thread.
class CPUPresentation : public QObject {
    Q_OBJECT

public:
    /// `state` must outlive this.
    CPUPresentation(AppState& state, ProgramActions actions);

private:
    AppState& state_;
    ProgramActions actions_;
};

} // namespace cindertop::ui
