#include "ui/views/charts/ProcessLoadCanvas.h"

#include "ui/views/charts/ChartStyle.h"

#include <QPainter>
#include <QPen>
#include <QPolygonF>

namespace cindertop::ui {

ProcessLoadCanvas::ProcessLoadCanvas(QQuickItem* parent) : QQuickPaintedItem(parent) {
    connect(this, &ProcessLoadCanvas::changed, this, [this] { update(); });
}

void ProcessLoadCanvas::paint(QPainter* painter) {
    painter->setPen(QPen(gridColor_, 1));
    for (const double value : {0.0, 0.5, 1.0}) {
        painter->drawLine(at(0, value), at(1, value));
    }
    QPolygonF line;
    for (const auto& point : history_.points) {
        line += at(history_.position(point), point.normalizedValue);
    }
    if (line.size() < 2) {
        return;
    }
    auto area = line;
    area += at(1, 0);
    area += at(0, 0);
    auto fill = lineColor_;
    fill.setAlphaF(static_cast<float>(chartFillOpacity));
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(fill);
    painter->drawPolygon(area);
    painter->setPen(QPen(lineColor_, chartLineWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter->drawPolyline(line);
}

/// Half of the line's width is left free above and below.
QPointF ProcessLoadCanvas::at(double position, double value) const {
    return {position * width(), chartLineWidth / 2 + (1 - value) * (height() - chartLineWidth)};
}

} // namespace cindertop::ui
