#pragma once

#include <QQuickImageProvider>

namespace cindertop::ui {

/// The soft shadow of a window with round corners, as a small picture whose middle may be stretched:
/// "image://shadow/COLOR/MARGIN/RADIUS", the colour as "AARRGGBB" and the lengths in whole points.
class ShadowImageProvider final : public QQuickImageProvider {
public:
    ShadowImageProvider();

    QImage requestImage(const QString& id, QSize* size, const QSize& requestedSize) override;
};

} // namespace cindertop::ui
