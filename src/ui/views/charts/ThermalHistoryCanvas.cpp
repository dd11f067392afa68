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

bool areAlike(const ThermalHistorySample& left, const ThermalHistorySample& right) {
    return left.level == right.level && isHeatKnown(left) == isHeatKnown(right);
}

/// How many points from the first on are of one level, or of none.
std::size_t lengthOfStretch(std::span<const ThermalHistoryPoint> points) {
    std::size_t end = 1;
    while (end < points.size() && areAlike(*points[end].sample, *points.front().sample)) {
        ++end;
    }
    return end;
}

} // namespace

ThermalHistoryCanvas::ThermalHistoryCanvas(QQuickItem* parent) : QQuickPaintedItem(parent) {
    connect(this, &ThermalHistoryCanvas::changed, this, [this] { update(); });
}

void ThermalHistoryCanvas::paint(QPainter* painter) {
    paintGrid(*painter);
    const auto runs =
        thermalHistoryRuns(samples_.values, Instant(std::chrono::milliseconds(now_.toMSecsSinceEpoch())),
                           std::chrono::minutes(shownMinutes_));
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
        const auto length = lengthOfStretch(rest);
        // A level holds up to the next known one.
        const bool isFollowed = length < rest.size() && isHeatKnown(*rest[length].sample);
        const auto stretch = rest.first(isFollowed ? length + 1 : length);
        rest = rest.subspan(length);
        if (!isHeatKnown(*stretch.front().sample)) {
            continue;
        }
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
