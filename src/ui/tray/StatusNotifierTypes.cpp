#include "ui/tray/StatusNotifierTypes.h"

#include <QDBusMetaType>
#include <QtEndian>

namespace cindertop::ui {

IconPixmap IconPixmap::of(const QImage& image) {
    const auto argb = image.convertToFormat(QImage::Format_ARGB32);
    IconPixmap pixmap{.width = argb.width(), .height = argb.height(), .pixels = {}};
    const auto width = static_cast<qsizetype>(argb.width());
    pixmap.pixels.resize(width * argb.height() * static_cast<qsizetype>(sizeof(QRgb)));
    for (int row = 0; row < argb.height(); ++row) {
        auto* const target = pixmap.pixels.data() + row * width * static_cast<qsizetype>(sizeof(QRgb));
        qToBigEndian<quint32>(argb.constScanLine(row), width, target);
    }
    return pixmap;
}

QList<IconPixmap> IconPixmap::of(const std::vector<QImage>& images) {
    QList<IconPixmap> pixmaps;
    for (const auto& image : images) {
        pixmaps.append(of(image));
    }
    return pixmaps;
}

QDBusArgument& operator<<(QDBusArgument& argument, const IconPixmap& pixmap) {
    argument.beginStructure();
    argument << pixmap.width << pixmap.height << pixmap.pixels;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, IconPixmap& pixmap) {
    argument.beginStructure();
    argument >> pixmap.width >> pixmap.height >> pixmap.pixels;
    argument.endStructure();
    return argument; // NOLINT(bugprone-return-const-ref-from-parameter): as Qt wants it
}

QDBusArgument& operator<<(QDBusArgument& argument, const ToolTip& toolTip) {
    argument.beginStructure();
    argument << toolTip.iconName << toolTip.icon << toolTip.title << toolTip.text;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, ToolTip& toolTip) {
    argument.beginStructure();
    argument >> toolTip.iconName >> toolTip.icon >> toolTip.title >> toolTip.text;
    argument.endStructure();
    return argument; // NOLINT(bugprone-return-const-ref-from-parameter): as Qt wants it
}

void registerStatusNotifierTypes() {
    qDBusRegisterMetaType<IconPixmap>();
    qDBusRegisterMetaType<QList<IconPixmap>>();
    qDBusRegisterMetaType<ToolTip>();
}

} // namespace cindertop::ui
