#include "ui/views/charts/SensorCanvas.h"

#include "thermal/SensorCourses.h"

#include <QPainter>
#include <QPen>
#include <QPolygonF>

namespace cindertop::ui {

namespace {

constexpr double sensorLineWidth = 1.5;

} // namespace

SensorCanvas::SensorCanvas(QQuickItem* parent) : QQuickPaintedItem(parent) {
    connect(this, &SensorCanvas::changed, this, [this] { update(); });
}

void SensorCanvas::paint(QPainter* painter) {
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(lineColor_, sensorLineWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    QPolygonF line;
    for (qsizetype step = 0; step <= heights_.size(); ++step) {
        const bool isAnswered = step < heights_.size() && heights_[step] >= 0;
        if (isAnswered) {
            line += at(step);
        } else if (!line.isEmpty()) {
            painter->drawPolyline(line.size() == 1 ? QPolygonF({line[0], line[0]}) : line);
            line.clear();
        }
    }
}

QPointF SensorCanvas::at(qsizetype step) const {
    const auto fromRight = static_cast<double>(heights_.size() - 1 - step);
    const double room = width() - sensorLineWidth;
    return {sensorLineWidth / 2 + room * (1 - fromRight / (SensorCourses::mostSteps - 1)),
            sensorLineWidth / 2 + (1 - heights_[step]) * (height() - sensorLineWidth)};
}

} // namespace cindertop::ui
