#pragma once

#include "app/AppState.h"
#include "ui/ProgramActions.h"

#include <QObject>

namespace cindertop::ui {

/// What the settings window's Monitoring tab shows. Main thread.
class MonitoringPresentation : public QObject {
    Q_OBJECT

public:
    /// `state` must outlive this.
    MonitoringPresentation(AppState& state, ProgramActions actions);

private:
    AppState& state_;
    ProgramActions actions_;
};

} // namespace cindertop::ui
