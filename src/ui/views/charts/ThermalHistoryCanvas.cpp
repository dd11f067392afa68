#include "ui/views/charts/ThermalHistoryCanvas.h"

#include "ui/views/charts/ChartStyle.h"

#include <QPainter>
#include <QPen>
#include <QPolygonF>
#include <array>
#include <span>

namespace cindertop::ui {

namespace {

constexpr std::array gridScores{0, 25, 60, 90, 100}; ///< where the levels begin, and the ends

double scoreHeight(const ThermalHistorySample& sample) {
    return static_cast<double>(sample.score) / 100;
}

/// The points of one level, with the first of the next one, up to which they hold.
std::span<const ThermalHistoryPoint> firstStretch(std::span<const ThermalHistoryPoint> points) {
    std::size_t end = 1;
    while (end < points.size() && points[end].sample->level == points.front().sample->level) {
        ++end;
    }
    return points.first(std::min(end + 1, points.size()));
}

} // namespace

ThermalHistoryCanvas::ThermalHistoryCanvas(QQuickItem* parent) : QQuickPaintedItem(parent) {
    connect(this, &ThermalHistoryCanvas::changed, this, [this] { update(); });
}

void ThermalHistoryCanvas::paint(QPainter* painter) {
    paintGrid(*painter);
    const auto runs =
        thermalHistoryRuns(samples_.values, Instant(std::chrono::milliseconds(now_.toMSecsSinceEpoch())));
    painter->setRenderHint(QPainter::Antialiasing);
    for (const auto& run : runs) {
        paintScores(*painter, run);
        painter->setPen(QPen(cpuColor_, 1.25, Qt::DotLine, Qt::RoundCap));
        paintLine(*painter, run, [](const ThermalHistorySample& sample) {
            return sample.globalCPUPercent.transform([](double percent) { return percent / 100; });
        });
        if (showsTemperature_) {
            painter->setPen(QPen(temperatureColor_, 1.25));
            paintLine(*painter, run, [](const ThermalHistorySample& sample) {
                return sample.temperatureCelsius.transform(temperatureHeight);
            });
        }
    }
}

/// Half of the line's width is left free above and below.
QPointF ThermalHistoryCanvas::at(double position, double height) const {
    return {position * width(), chartLineWidth / 2 + (1 - height) * (this->height() - chartLineWidth)};
}

QColor ThermalHistoryCanvas::levelColor(const ThermalHistorySample& sample) const {
    return levelColors_.value(static_cast<int>(sample.level));
}

void ThermalHistoryCanvas::paintGrid(QPainter& painter) const {
    painter.setPen(QPen(gridColor_, 1));
    for (const int score : gridScores) {
        painter.drawLine(at(0, score / 100.0), at(1, score / 100.0));
    }
}

void ThermalHistoryCanvas::paintScores(QPainter& painter, const ThermalHistoryRun& run) const {
    std::span<const ThermalHistoryPoint> rest = run;
    while (!rest.empty()) {
        const auto stretch = firstStretch(rest);
        const auto color = levelColor(*stretch.front().sample);
        QPolygonF line;
        for (const auto& point : stretch) {
            line += at(point.position, scoreHeight(*point.sample));
        }
        auto area = line;
        area += QPointF(line.back().x(), at(0, 0).y());
        area += QPointF(line.front().x(), at(0, 0).y());
        auto fill = color;
        fill.setAlphaF(static_cast<float>(chartFillOpacity));
        // Smooth edges of two fills that meet would leave a seam.
        painter.setRenderHint(QPainter::Antialiasing, false);
        painter.setPen(Qt::NoPen);
        painter.setBrush(fill);
        painter.drawPolygon(area);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(color, chartLineWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        if (line.size() == 1) {
            painter.drawPoint(line.front());
        } else {
            painter.drawPolyline(line);
        }
        rest = rest.subspan(stretch.size() == rest.size() ? stretch.size() : stretch.size() - 1);
    }
}

void ThermalHistoryCanvas::paintLine(QPainter& painter, const ThermalHistoryRun& run,
                                     const Height& height) const {
    QPolygonF line;
    for (const auto& point : run) {
        if (const auto measured = height(*point.sample)) {
            line += at(point.position, *measured);
        } else {
            painter.drawPolyline(line);
            line.clear();
        }
    }
    painter.drawPolyline(line);
}

} // namespace cindertop::ui
