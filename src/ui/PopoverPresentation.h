#pragma once

#include "app/AppState.h"
#include "ui/ProgramActions.h"

#include <QObject>

namespace cindertop::ui {

/// What the popover shows. Main thread.
class PopoverPresentation : public QObject {
    Q_OBJECT

public:
    /// `state` must outlive this.
    PopoverPresentation(AppState& state, ProgramActions actions);

private:
    AppState& state_;
    ProgramActions actions_;
};

} // namespace cindertop::ui
