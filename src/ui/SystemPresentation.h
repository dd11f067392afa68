#pragma once

#include "app/AppState.h"
#include "ui/SettingsConfirmation.h"
#include "ui/SystemTexts.h"

#include <QObject>
#include <QPropertyNotifier>
#include <QString>
#include <QStringList>
#include <vector>

namespace cindertop::ui {

/// What the settings window's System tab shows and changes. Each change takes effect at once. Main thread.
class SystemPresentation : public QObject {
    Q_OBJECT
    Q_PROPERTY(cindertop::ui::SystemTexts texts READ texts CONSTANT)
    Q_PROPERTY(QStringList modeLabels READ modeLabels NOTIFY modesChanged)
    Q_PROPERTY(QStringList modeSymbolNames READ modeSymbolNames NOTIFY modesChanged)
    Q_PROPERTY(int modeIndex READ modeIndex WRITE setModeIndex NOTIFY modesChanged)

    Q_PROPERTY(bool launchesAtLogin READ launchesAtLogin WRITE setLaunchesAtLogin NOTIFY changed)
    Q_PROPERTY(QString launchAtLoginDetail READ launchAtLoginDetail NOTIFY changed)
    Q_PROPERTY(bool showsDockIcon READ showsDockIcon WRITE setShowsDockIcon NOTIFY changed)
    Q_PROPERTY(
        bool notificationsEnabled READ notificationsEnabled WRITE setNotificationsEnabled NOTIFY changed)
    Q_PROPERTY(QString notificationsDetail READ notificationsDetail NOTIFY changed)
    Q_PROPERTY(bool readsTemperatures READ readsTemperatures WRITE setReadsTemperatures NOTIFY changed)
    Q_PROPERTY(
        bool diagnosticLogsEnabled READ diagnosticLogsEnabled WRITE setDiagnosticLogsEnabled NOTIFY changed)
    Q_PROPERTY(bool exportSucceeded READ exportSucceeded NOTIFY changed)
    Q_PROPERTY(QString exportText READ exportText NOTIFY changed)

public:
    /// `state` must outlive this.
    SystemPresentation(AppState& state, PresentConfirmation presentConfirmation);

    SystemTexts texts() const { return SystemTexts::in(system()); }

    /// What may stand beside the icon now, and which of it does.
    QStringList modeLabels() const;
    QStringList modeSymbolNames() const;
    /// -1: none of them.
    int modeIndex() const;
    /// Another index than those of the labels changes nothing.
    void setModeIndex(int index);

    bool launchesAtLogin() const;
    void setLaunchesAtLogin(bool launches);
    /// What came of the last change, and what the switch cannot tell; may be empty.
    QString launchAtLoginDetail() const;

    bool showsDockIcon() const;
    void setShowsDockIcon(bool shows);

    bool notificationsEnabled() const;
    void setNotificationsEnabled(bool isEnabled);
    /// Why there are none although they are wanted; else empty.
    QString notificationsDetail() const;

    bool readsTemperatures() const;
    void setReadsTemperatures(bool reads);

    bool diagnosticLogsEnabled() const;
    void setDiagnosticLogsEnabled(bool isEnabled);

    /// For a short time after an export.
    bool exportSucceeded() const;
    /// What it says then.
    QString exportText() const;

    /// Asks the user where to.
    Q_INVOKABLE void exportLogs();
    /// Asks the user first.
    Q_INVOKABLE void resetToDefaults();

Q_SIGNALS:
    void modesChanged();
    void changed();

private:
    std::vector<MenuBarInfoMode> modes() const;

    OperatingSystem system() const { return state_.environment().machine.operatingSystem; }

    AppState& state_;
    PresentConfirmation presentConfirmation_;
    std::vector<QPropertyNotifier> observations_;
};

} // namespace cindertop::ui
