#pragma once

#include <QByteArray>
#include <QDBusArgument>
#include <QImage>
#include <QList>
#include <QMetaType>
#include <QString>
#include <vector>

namespace cindertop::ui {

/// A picture as status items carry it: rows of pixels, each the bytes A, R, G, B, not premultiplied.
struct IconPixmap {
    int width = 0;
    int height = 0;
    QByteArray pixels;

    static IconPixmap of(const QImage& image);
    static QList<IconPixmap> of(const std::vector<QImage>& images);
};

/// What a desktop shows when the pointer rests on the item.
struct ToolTip {
    QString iconName;
    QList<IconPixmap> icon;
    QString title;
    QString text;
};

QDBusArgument& operator<<(QDBusArgument& argument, const IconPixmap& pixmap);
const QDBusArgument& operator>>(const QDBusArgument& argument, IconPixmap& pixmap);
QDBusArgument& operator<<(QDBusArgument& argument, const ToolTip& toolTip);
const QDBusArgument& operator>>(const QDBusArgument& argument, ToolTip& toolTip);

/// Makes the types known to Qt; any number of times.
void registerStatusNotifierTypes();

} // namespace cindertop::ui

Q_DECLARE_METATYPE(cindertop::ui::IconPixmap)
Q_DECLARE_METATYPE(cindertop::ui::ToolTip)
