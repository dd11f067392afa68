#include "ui/views/popover/ShadowImageProvider.h"

#include <QColor>
#include <QStringList>
#include <algorithm>
#include <cmath>
#include <numbers>

namespace cindertop::ui {

namespace {

struct Shadow {
    QColor color;
    int margin{}; ///< room around the window
    int radius{}; ///< of the window's corners

    /// Corners with their margins, and between them one point to be stretched.
    int side() const { return 2 * (margin + 2 * radius) + 1; }
};

/// How far a point is outside the window's edge; negative inside.
double distanceToEdge(const Shadow& shadow, double x, double y) {
    const double half = shadow.side() / 2.0;
    const double core = half - shadow.margin - shadow.radius;
    const double outX = std::max(std::abs(x - half) - core, 0.0);
    const double outY = std::max(std::abs(y - half) - core, 0.0);
    return std::hypot(outX, outY) - shadow.radius;
}

/// A Gaussian blur of a straight edge, which ends within the margin.
double darkness(double distance, double margin) {
    const double deviation = margin / 2.6;
    return 0.5 * std::erfc(distance / (deviation * std::numbers::sqrt2));
}

QImage paint(const Shadow& shadow) {
    QImage image(shadow.side(), shadow.side(), QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < shadow.side(); ++y) {
        for (int x = 0; x < shadow.side(); ++x) {
            auto color = shadow.color;
            const double distance = distanceToEdge(shadow, x + 0.5, y + 0.5);
            color.setAlphaF(color.alphaF() * static_cast<float>(darkness(distance, shadow.margin)));
            image.setPixelColor(x, y, color);
        }
    }
    return image;
}

} // namespace

ShadowImageProvider::ShadowImageProvider() : QQuickImageProvider(QQuickImageProvider::Image) {}

QImage ShadowImageProvider::requestImage(const QString& id, QSize* size, const QSize& /*requestedSize*/) {
    const auto parts = id.split('/');
    if (parts.size() != 3) {
        return {};
    }
    const Shadow shadow{.color = QColor('#' + parts[0]),
                        .margin = std::clamp(parts[1].toInt(), 1, 100),
                        .radius = std::clamp(parts[2].toInt(), 0, 100)};
    auto image = paint(shadow);
    *size = image.size();
    return image;
}

} // namespace cindertop::ui
