#pragma once

#include "app/AppState.h"
#include "ui/ProgramActions.h"

#include <QObject>

namespace cindertop::ui {

/// What the settings window's Info tab shows. Main thread.
class InfoPresentation : public QObject {
    Q_OBJECT

public:
    /// `state` must outlive this.
    InfoPresentation(AppState& state, ProgramActions actions);

private:
    AppState& state_;
    ProgramActions actions_;
};

} // namespace cindertop::ui
