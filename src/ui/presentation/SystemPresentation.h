#pragma once

#include "app/AppState.h"
#include "ui/presentation/SettingsConfirmation.h"
#include "ui/presentation/SystemTexts.h"

#include <QObject>
#include <QPropertyNotifier>
#include <QString>
#include <QStringList>
#include <QVariantMap>
#include <vector>

namespace cindertop::ui {

/// What the settings window's System tab shows and changes. Each change takes effect at once. Main thread.
class SystemPresentation : public QObject {
    Q_OBJECT
    Q_PROPERTY(cindertop::ui::SystemTexts texts READ texts CONSTANT)
    Q_PROPERTY(QVariantMap preferences READ preferences NOTIFY changed)
    Q_PROPERTY(QStringList modeLabels READ modeLabels NOTIFY changed)
    Q_PROPERTY(QStringList modeSymbolNames READ modeSymbolNames NOTIFY changed)
    Q_PROPERTY(bool launchesAtLogin READ launchesAtLogin WRITE setLaunchesAtLogin NOTIFY changed)
    Q_PROPERTY(QString launchAtLoginDetail READ launchAtLoginDetail NOTIFY changed)
    Q_PROPERTY(QString notificationsDetail READ notificationsDetail NOTIFY changed)
    Q_PROPERTY(QString ranksApplicationsDetail READ ranksApplicationsDetail NOTIFY changed)
    Q_PROPERTY(QStringList historyLengthLabels READ historyLengthLabels NOTIFY changed)
    Q_PROPERTY(int historyLengthIndex READ historyLengthIndex WRITE setHistoryLengthIndex NOTIFY changed)
    Q_PROPERTY(bool offersTaskBar READ offersTaskBar CONSTANT)
    Q_PROPERTY(bool offersTemperatureUnit READ offersTemperatureUnit CONSTANT)
    Q_PROPERTY(bool exportSucceeded READ exportSucceeded NOTIFY changed)
    Q_PROPERTY(QString exportText READ exportText NOTIFY changed)

public:
    /// `state` must outlive this.
    SystemPresentation(AppState& state, PresentConfirmation presentConfirmation, bool canEnterTaskBar);

    SystemTexts texts() const { return SystemTexts::in(system()); }

    /// Each by its name; where one of several names is chosen, the place of that one, -1 for a retired one.
    QVariantMap preferences() const;
    /// Takes such a value. What is not offered now changes nothing.
    Q_INVOKABLE void set(const QString& name, const QVariant& value);

    /// What may stand beside the icon now.
    QStringList modeLabels() const;
    QStringList modeSymbolNames() const;

    bool launchesAtLogin() const;
    void setLaunchesAtLogin(bool launches);
    /// What came of the last change, and what the switch cannot tell; may be empty.
    QString launchAtLoginDetail() const;

    /// Why there are none although they are wanted; else empty.
    QString notificationsDetail() const;

    /// Why applications are always ranked, after somebody tried to switch that off; else empty.
    QString ranksApplicationsDetail() const { return ranksApplicationsDetail_; }

    /// A length that was chosen elsewhere is listed behind the usual ones.
    QStringList historyLengthLabels() const;
    int historyLengthIndex() const;
    /// Another index than those of the labels changes nothing.
    void setHistoryLengthIndex(int index);

    /// Where the desktop can list the program while none of its windows is open.
    bool offersTaskBar() const { return canEnterTaskBar_ || system() != OperatingSystem::gnuLinux; }

    /// Where the language of texts need not be that of the thermometer.
    bool offersTemperatureUnit() const;

    /// For a short time after an export.
    bool exportSucceeded() const;
    /// What it says then.
    QString exportText() const;

    /// Asks the user where to.
    Q_INVOKABLE void exportLogs();
    /// Asks the user first.
    Q_INVOKABLE void resetToDefaults();

Q_SIGNALS:
    void changed();

private:
    std::vector<MenuBarInfoMode> modes() const;
    std::vector<int> historyLengths() const;

    const AppSettingsFields& settings() const { return *state_.published().settings; }

    OperatingSystem system() const { return state_.environment().machine.operatingSystem; }

    AppState& state_;
    PresentConfirmation presentConfirmation_;
    bool canEnterTaskBar_;
    QString ranksApplicationsDetail_;
    std::vector<QPropertyNotifier> observations_;
};

} // namespace cindertop::ui
