#include "ui/views/popover/TurningBorder.h"

#include <QConicalGradient>
#include <QPainter>
#include <QPen>

namespace cindertop::ui {

TurningBorder::TurningBorder(QQuickItem* parent) : QQuickPaintedItem(parent) {
    connect(this, &TurningBorder::changed, this, [this] { update(); });
}

void TurningBorder::paint(QPainter* painter) {
    const auto line =
        boundingRect().adjusted(lineWidth_ / 2, lineWidth_ / 2, -lineWidth_ / 2, -lineWidth_ / 2);
    QConicalGradient gradient(line.center(), gradientStartAngle_);
    gradient.setColorAt(0, accentColor_);
    gradient.setColorAt(0.14, accentColor_);
    gradient.setColorAt(0.40, baseColor_);
    gradient.setColorAt(0.60, baseColor_);
    gradient.setColorAt(0.86, accentColor_);
    gradient.setColorAt(1, accentColor_);
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setBrush(Qt::NoBrush);
    painter->setPen(QPen(gradient, lineWidth_));
    painter->drawRoundedRect(line, radius_, radius_);
}

} // namespace cindertop::ui
