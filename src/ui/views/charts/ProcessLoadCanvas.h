#pragma once

#include "ui/presentation/ProcessLoadHistory.h"

#include <QColor>
#include <QQuickPaintedItem>

#include <QtQml/qqmlregistration.h>

namespace cindertop::ui {

/// Draws an offender's history as a line over a light fill, from its oldest point to its newest.
class ProcessLoadCanvas : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT

    Q_PROPERTY(cindertop::ui::ProcessLoadHistory history MEMBER history_ NOTIFY changed REQUIRED)
    Q_PROPERTY(QColor lineColor MEMBER lineColor_ NOTIFY changed REQUIRED)
    Q_PROPERTY(QColor gridColor MEMBER gridColor_ NOTIFY changed REQUIRED)

public:
    explicit ProcessLoadCanvas(QQuickItem* parent = nullptr);
    void paint(QPainter* painter) override;

Q_SIGNALS:
    void changed();

private:
    QPointF at(double position, double value) const;

    ProcessLoadHistory history_;
    QColor lineColor_;
    QColor gridColor_;
};

} // namespace cindertop::ui
