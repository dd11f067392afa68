#pragma once

#include "ui/CPUPresentation.h"
#include "ui/InfoPresentation.h"
#include "ui/MonitoringPresentation.h"
#include "ui/SystemPresentation.h"

#include <QObject>

namespace cindertop::ui {

/// What the settings window shows. Main thread.
class SettingsPresentation : public QObject {
    Q_OBJECT
    Q_PROPERTY(cindertop::ui::InfoPresentation* info READ info CONSTANT)
    Q_PROPERTY(cindertop::ui::MonitoringPresentation* monitoring READ monitoring CONSTANT)
    Q_PROPERTY(cindertop::ui::CPUPresentation* cpu READ cpu CONSTANT)
    Q_PROPERTY(cindertop::ui::SystemPresentation* system READ system CONSTANT)

public:
    /// `state` must outlive this.
    SettingsPresentation(AppState& state, const ProgramActions& actions);

    InfoPresentation* info() { return &info_; }

    MonitoringPresentation* monitoring() { return &monitoring_; }

    CPUPresentation* cpu() { return &cpu_; }

    SystemPresentation* system() { return &system_; }

private:
    InfoPresentation info_;
    MonitoringPresentation monitoring_;
    CPUPresentation cpu_;
    SystemPresentation system_;
};

} // namespace cindertop::ui
