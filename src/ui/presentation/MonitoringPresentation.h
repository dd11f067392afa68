#pragma once

#include "app/AppState.h"
#include "ui/presentation/ThermalHistoryPlot.h"

#include <QDateTime>
#include <QList>
#include <QObject>
#include <QPropertyNotifier>
#include <QString>
#include <QStringList>
#include <array>
#include <memory>
#include <vector>

namespace cindertop::ui {

/// What the settings window's Monitoring tab shows. Main thread.
class MonitoringPresentation : public QObject {
    Q_OBJECT
    Q_PROPERTY(cindertop::ui::ThermalHistorySamples samples READ samples NOTIFY changed)
    Q_PROPERTY(QDateTime now READ now NOTIFY changed)
    Q_PROPERTY(int shownMinutes READ shownMinutes NOTIFY changed)
    Q_PROPERTY(QString title READ title NOTIFY changed)
    Q_PROPERTY(QString shortTitle READ shortTitle NOTIFY changed)
    Q_PROPERTY(bool hasHeat READ hasHeat NOTIFY changed)
    Q_PROPERTY(bool hasChart READ hasChart NOTIFY changed)
    Q_PROPERTY(bool hasTemperatures READ hasTemperatures NOTIFY changed)
    Q_PROPERTY(QString highestTemperatureText READ highestTemperatureText NOTIFY changed)
    Q_PROPERTY(QString lowestTemperatureText READ lowestTemperatureText NOTIFY changed)
    Q_PROPERTY(QString historySummary READ historySummary NOTIFY changed)
    Q_PROPERTY(double inspectedPosition READ inspectedPosition WRITE inspect NOTIFY inspectedChanged)
    Q_PROPERTY(cindertop::ui::ThermalHistoryReadout readout READ readout NOTIFY inspectedChanged)

    Q_PROPERTY(QString trackedText READ trackedText NOTIFY changed)
    Q_PROPERTY(QString seriousText READ seriousText NOTIFY changed)
    Q_PROPERTY(QString criticalText READ criticalText NOTIFY changed)
    Q_PROPERTY(QString frequentLoadText READ frequentLoadText NOTIFY changed)
    Q_PROPERTY(QString frequentLoadIconSource READ frequentLoadIconSource NOTIFY changed)
    Q_PROPERTY(bool hasLevels READ hasLevels NOTIFY changed)
    Q_PROPERTY(QStringList levelLabels READ levelLabels CONSTANT)
    Q_PROPERTY(QList<double> levelDurations READ levelDurations NOTIFY changed)
    Q_PROPERTY(double totalDuration READ totalDuration NOTIFY changed)

    Q_PROPERTY(bool isShown READ isShown WRITE setShown NOTIFY shownChanged)

public:
    /// `state` must outlive this.
    explicit MonitoringPresentation(AppState& state);

    ThermalHistorySamples samples() const;

    /// The right end of the chart.
    QDateTime now() const;

    /// How far back the chart goes, as the user wants it and at most as far as is recorded.
    int shownMinutes() const;
    /// "Last 60 Minutes", "Last Hour".
    QString title() const;
    QString shortTitle() const;

    /// Whether any charted sample knew the machine's heat.
    bool hasHeat() const;

    /// A line needs two samples.
    bool hasChart() const { return hasChart_; }

    bool hasTemperatures() const;
    /// At the upper end of the chart.
    QString highestTemperatureText() const;
    QString lowestTemperatureText() const;
    /// The chart for those who do not see it.
    QString historySummary() const;

    /// Of the chart, 0 to 1; negative: nothing is inspected.
    double inspectedPosition() const { return inspectedPosition_; }

    void inspect(double position);

    /// The sample next to the inspected position.
    const ThermalHistoryReadout& readout() const { return readout_; }

    /// Goes to the next sample that is `minutes` away, from the newest where nothing is inspected.
    Q_INVOKABLE void moveInspection(int minutes);

    // Today

    QString trackedText() const;
    QString seriousText() const;
    QString criticalText() const;
    QString frequentLoadText() const;
    /// Of the application that was on top most often; empty where it is not known.
    QString frequentLoadIconSource() const;

    /// Whether the day's time at each level was measured.
    bool hasLevels() const;
    static QStringList levelLabels();
    /// Seconds at each level.
    QList<double> levelDurations() const;
    double totalDuration() const;
    Q_INVOKABLE static QString durationText(double seconds);

    bool isShown() const { return isShown_; }

    /// While it is shown the chart moves on with the time, also when nothing is measured.
    void setShown(bool isShown);

Q_SIGNALS:
    void changed();
    void inspectedChanged();
    void shownChanged();

private:
    const ThermalMonitoringSnapshot& snapshot() const;
    std::vector<const ThermalHistorySample*> charted() const;
    std::vector<ThermalHistoryRun> runs() const;
    void update();
    void scheduleUpdate();
    void updateReadout();
    ThermalHistoryReadout readoutAt(double position) const;
    ThermalHistoryReadout readoutOf(const ThermalHistorySample& sample, double position) const;

    AppState& state_;
    Instant now_;
    bool hasChart_ = false;
    bool isShown_ = false;
    double inspectedPosition_ = -1;
    ThermalHistoryReadout readout_;
    std::unique_ptr<Timer> nextUpdate_;
    std::array<QPropertyNotifier, 3> observations_;
};

} // namespace cindertop::ui
