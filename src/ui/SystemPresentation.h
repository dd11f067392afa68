#pragma once

#include "app/AppState.h"
#include "ui/ProgramActions.h"

#include <QObject>

namespace cindertop::ui {

/// What the settings window's System tab shows. Main thread.
class SystemPresentation : public QObject {
    Q_OBJECT

public:
    /// `state` must outlive this.
    SystemPresentation(AppState& state, ProgramActions actions);

private:
    AppState& state_;
    ProgramActions actions_;
};

} // namespace cindertop::ui
