#pragma once

#include <QColor>
#include <QList>
#include <QQuickPaintedItem>

#include <QtQml/qqmlregistration.h>

namespace cindertop::ui {

/// Draws the last minutes of a sensor as a line, the newest step at the right edge. A step without an answer
/// is a gap.
class SensorCanvas : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT

    Q_PROPERTY(QList<double> heights MEMBER heights_ NOTIFY changed REQUIRED)
    Q_PROPERTY(QColor lineColor MEMBER lineColor_ NOTIFY changed REQUIRED)

public:
    explicit SensorCanvas(QQuickItem* parent = nullptr);
    void paint(QPainter* painter) override;

Q_SIGNALS:
    void changed();

private:
    QPointF at(qsizetype step) const;

    QList<double> heights_; ///< 0 to 1, oldest first; negative: no answer
    QColor lineColor_;
};

} // namespace cindertop::ui
