#pragma once

#include "app/AppState.h"
#include "ui/presentation/SettingsConfirmation.h"
#include "ui/presentation/SystemTexts.h"

#include <QObject>
#include <QPropertyNotifier>
#include <QString>
#include <QStringList>
#include <cstdint>
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
    Q_PROPERTY(QStringList alertLevelLabels READ alertLevelLabels CONSTANT)
    Q_PROPERTY(int alertLevelIndex READ alertLevelIndex WRITE setAlertLevelIndex NOTIFY changed)
    Q_PROPERTY(QStringList verbosityLabels READ verbosityLabels CONSTANT)
    Q_PROPERTY(int verbosityIndex READ verbosityIndex WRITE setVerbosityIndex NOTIFY changed)
    Q_PROPERTY(
        bool showsContextInsights READ showsContextInsights WRITE setShowsContextInsights NOTIFY changed)
    Q_PROPERTY(bool ranksApplications READ ranksApplications WRITE setRanksApplications NOTIFY changed)
    Q_PROPERTY(QString ranksApplicationsDetail READ ranksApplicationsDetail NOTIFY changed)
    Q_PROPERTY(bool recordsHistory READ recordsHistory WRITE setRecordsHistory NOTIFY changed)
    Q_PROPERTY(QStringList historyLengthLabels READ historyLengthLabels NOTIFY changed)
    Q_PROPERTY(int historyLengthIndex READ historyLengthIndex WRITE setHistoryLengthIndex NOTIFY changed)
    Q_PROPERTY(bool offersTemperatureUnit READ offersTemperatureUnit CONSTANT)
    Q_PROPERTY(QStringList temperatureUnitLabels READ temperatureUnitLabels CONSTANT)
    Q_PROPERTY(
        int temperatureUnitIndex READ temperatureUnitIndex WRITE setTemperatureUnitIndex NOTIFY changed)
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

    // Of each choice its labels and which of them holds. Another index than those of the labels changes
    // nothing.

    static QStringList alertLevelLabels();
    int alertLevelIndex() const;
    void setAlertLevelIndex(int index);

    static QStringList verbosityLabels();
    int verbosityIndex() const;
    void setVerbosityIndex(int index);

    bool showsContextInsights() const;
    void setShowsContextInsights(bool shows);

    /// Always; switching it off is refused, and the detail says why.
    bool ranksApplications() const;
    void setRanksApplications(bool ranks);

    QString ranksApplicationsDetail() const { return ranksApplicationsDetail_; }

    bool recordsHistory() const;
    void setRecordsHistory(bool records);

    /// A length that was chosen elsewhere is listed behind the usual ones.
    QStringList historyLengthLabels() const;
    int historyLengthIndex() const;
    void setHistoryLengthIndex(int index);

    /// Where the language of texts need not be that of the thermometer.
    bool offersTemperatureUnit() const;
    static QStringList temperatureUnitLabels();
    int temperatureUnitIndex() const;
    void setTemperatureUnitIndex(int index);

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
    std::vector<std::int64_t> historyLengths() const;

    OperatingSystem system() const { return state_.environment().machine.operatingSystem; }

    AppState& state_;
    PresentConfirmation presentConfirmation_;
    QString ranksApplicationsDetail_;
    std::vector<QPropertyNotifier> observations_;
};

} // namespace cindertop::ui
