#include "ui/IconFont.h"

#include <QFontDatabase>
#include <QStringList>

static void initialiseResource() {
    Q_INIT_RESOURCE(icon_font); // a static library's resources are not found by themselves
}

namespace cindertop::ui {

const QString& iconFontFamily() {
    static const QString family = [] {
        initialiseResource();
        const int font = QFontDatabase::addApplicationFont(":/cindertop/icons.ttf");
        return QFontDatabase::applicationFontFamilies(font).value(0);
    }();
    return family;
}

} // namespace cindertop::ui
