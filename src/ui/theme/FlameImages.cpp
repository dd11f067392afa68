#include "ui/theme/FlameImages.h"

#include "support/Enumeration.h"
#include "ui/theme/Symbols.h"
#include "ui/theme/Theme.h"

#include <QPainter>
#include <QPen>
#include <QRawFont>
#include <QStandardPaths>
#include <QTransform>

namespace cindertop::ui {

namespace {

using Status = ThermalAssistantPresentation::Status;

/// How a flame is painted. The rim, if any, lies around it.
struct Look {
    QColor fill;
    QColor rim;
};

/// Nothing tells how bright a panel is. A light flame with a thin dark rim is seen on every panel: on a dark
/// one the rim vanishes, on a light one it draws the flame.
const Look templateLook{.fill = QColor(0xF2F2F2), .rim = QColor(0, 0, 0, 150)};

/// Straight from the font's data: by its family the system's fonts would be looked through first, and
/// remembered.
QPainterPath glyphOutline() {
    constexpr double size = 240; // large, so that nothing is rounded to pixels yet
    const QRawFont font(iconFontData(), size, QFont::PreferNoHinting);
    return font.pathForGlyph(font.glyphIndexesForString(symbolText(Theme::Symbols::menuBar)).value(0));
}

/// Fits the outline's height between margins of whole pixels, in the middle.
QTransform placement(const QRectF& bounds, int size) {
    const int margin = (size + 6) / 12;
    const double scale = (size - 2 * margin) / bounds.height();
    QTransform transform;
    transform.translate(size / 2.0, size / 2.0);
    transform.scale(scale, scale);
    transform.translate(-bounds.center().x(), -bounds.center().y());
    return transform;
}

QPainterPath fit(const QPainterPath& glyph, int size) {
    return placement(glyph.boundingRect(), size).map(glyph);
}

QImage drawFlame(const QPainterPath& glyph, const Look& look, int size) {
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    const auto flame = fit(glyph, size);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    if (look.rim.isValid()) {
        painter.strokePath(flame, QPen(look.rim, size / 11.0, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.setCompositionMode(QPainter::CompositionMode_Source);
    }
    painter.fillPath(flame, look.fill);
    painter.end();
    return std::move(image).convertToFormat(QImage::Format_ARGB32);
}

StatusImage drawAll(const QPainterPath& glyph, const Look& look) {
    StatusImage image;
    for (const int size : FlameImages::sizes) {
        image.sizes.push_back(drawFlame(glyph, look, size));
    }
    return image;
}

/// A name that no theme knows would leave the item empty on some desktops, no name on others.
QString installedName(Status status) {
    const auto name = FlameImages::iconName(status);
    const auto folder = FlameImages::color(status) ? QString("scalable/status") : QString("symbolic/apps");
    const auto file = "icons/hicolor/" + folder + '/' + name + ".svg";
    return QStandardPaths::locate(QStandardPaths::GenericDataLocation, file).isEmpty() ? QString() : name;
}

StatusImage drawLook(const QPainterPath& glyph, Status status) {
    const auto color = FlameImages::color(status);
    auto image = drawAll(glyph, color ? Look{.fill = *color, .rim = {}} : templateLook);
    image.themeName = installedName(status);
    return image;
}

} // namespace

QPainterPath FlameImages::outline(int size) {
    return fit(glyphOutline(), size);
}

FlameImages FlameImages::draw() {
    const auto glyph = glyphOutline();
    return {.active = drawLook(glyph, Status::normal),
            .fair = drawLook(glyph, Status::fair),
            .serious = drawLook(glyph, Status::serious),
            .critical = drawLook(glyph, Status::critical),
            .paused = drawLook(glyph, Status::paused)};
}

std::optional<QColor> FlameImages::color(Status status) {
    const bool isTemplate = status == Status::normal || status == Status::measuring;
    return isTemplate ? std::nullopt : std::optional(cindertop::color(status));
}

QString FlameImages::iconName(Status status) {
    const auto name = QString::fromStdString(std::string(caseName(status)));
    return color(status) ? "cindertop-" + name : QString("cindertop-symbolic");
}

const StatusImage& FlameImages::of(Status status) const {
    switch (status) {
    case Status::normal:
    case Status::measuring:
        return active;
    case Status::fair:
        return fair;
    case Status::serious:
        return serious;
    case Status::critical:
        return critical;
    default:
        return paused;
    }
}

} // namespace cindertop::ui
