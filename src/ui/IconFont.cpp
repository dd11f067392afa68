#include "ui/IconFont.h"

#include <QFontDatabase>
#include <QResource>
#include <QStringList>

static void initialiseResource() {
    Q_INIT_RESOURCE(icon_font); // a static library's resources are not found by themselves
}

namespace cindertop::ui {

QByteArray iconFontData() {
    initialiseResource();
    // Stored as it is, so that Qt reads it where it lies and keeps no copy.
    const QResource data(":/cindertop/icons.ttf");
    return QByteArray::fromRawData(reinterpret_cast<const char*>(data.data()), data.size());
}

const QString& iconFontFamily() {
    static const QString family = [] {
        const int font = QFontDatabase::addApplicationFontFromData(iconFontData());
        return QFontDatabase::applicationFontFamilies(font).value(0);
    }();
    return family;
}

} // namespace cindertop::ui
