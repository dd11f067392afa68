#pragma once

#include "ui/presentation/ThermalHistoryPlot.h"

#include <QColor>
#include <QDateTime>
#include <QList>
#include <QPointF>
#include <QQuickPaintedItem>
#include <functional>
#include <optional>

#include <QtQml/qqmlregistration.h>

namespace cindertop::ui {

/// Draws the recorded minutes: the score, where it is known, as a line over a light fill, both in the colour
/// of the level, the CPU of the whole machine dotted, and the temperature where it is asked for.
class ThermalHistoryCanvas : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT

    Q_PROPERTY(cindertop::ui::ThermalHistorySamples samples MEMBER samples_ NOTIFY changed REQUIRED)
    Q_PROPERTY(QDateTime now MEMBER now_ NOTIFY changed REQUIRED)
    /// From the left end to `now`.
    Q_PROPERTY(int shownMinutes MEMBER shownMinutes_ NOTIFY changed REQUIRED)
    /// By level, from normal to critical.
    Q_PROPERTY(QList<QColor> levelColors MEMBER levelColors_ NOTIFY changed REQUIRED)
    Q_PROPERTY(QColor cpuColor MEMBER cpuColor_ NOTIFY changed REQUIRED)
    Q_PROPERTY(QColor temperatureColor MEMBER temperatureColor_ NOTIFY changed REQUIRED)
    Q_PROPERTY(QColor gridColor MEMBER gridColor_ NOTIFY changed REQUIRED)
    Q_PROPERTY(bool showsTemperature MEMBER showsTemperature_ NOTIFY changed)

public:
    explicit ThermalHistoryCanvas(QQuickItem* parent = nullptr);
    void paint(QPainter* painter) override;

Q_SIGNALS:
    void changed();

private:
    /// Of a point, 0 to 1; none where it was not measured.
    using Height = std::function<std::optional<double>(const ThermalHistorySample& sample)>;

    QPointF at(double position, double height) const;
    QColor levelColor(const ThermalHistorySample& sample) const;
    void paintGrid(QPainter& painter) const;
    void paintScores(QPainter& painter, const ThermalHistoryRun& run) const;
    void paintLine(QPainter& painter, const ThermalHistoryRun& run, const Height& height) const;

    ThermalHistorySamples samples_;
    QDateTime now_;
    int shownMinutes_ = 60;
    QList<QColor> levelColors_;
    QColor cpuColor_;
    QColor temperatureColor_;
    QColor gridColor_;
    bool showsTemperature_ = false;
};

} // namespace cindertop::ui
