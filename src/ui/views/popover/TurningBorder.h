#pragma once

#include <QColor>
#include <QQuickPaintedItem>

#include <QtQml/qqmlregistration.h>

namespace cindertop::ui {

/// A thin rounded border whose colour runs around it from the accent to the base colour and back.
class TurningBorder : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT

    Q_PROPERTY(QColor accentColor MEMBER accentColor_ NOTIFY changed REQUIRED)
    Q_PROPERTY(QColor baseColor MEMBER baseColor_ NOTIFY changed REQUIRED)
    Q_PROPERTY(double radius MEMBER radius_ NOTIFY changed REQUIRED)
    Q_PROPERTY(double lineWidth MEMBER lineWidth_ NOTIFY changed REQUIRED)
    /// Degrees, counter-clockwise, where the accent stands.
    Q_PROPERTY(double gradientStartAngle MEMBER gradientStartAngle_ NOTIFY changed)

public:
    explicit TurningBorder(QQuickItem* parent = nullptr);
    void paint(QPainter* painter) override;

Q_SIGNALS:
    void changed();

private:
    QColor accentColor_;
    QColor baseColor_;
    double radius_ = 0;
    double lineWidth_ = 1;
    double gradientStartAngle_ = 0;
};

} // namespace cindertop::ui
