#include "ui/theme/ProgramIcon.h"

#include "ui/theme/FlameImages.h"
#include "ui/theme/Theme.h"

#include <QImage>
#include <QPainter>
#include <QPixmap>

namespace cindertop::ui {

QIcon programIcon() {
    QIcon icon;
    for (const int size : {16, 32, 48, 128}) { // pixels
        QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.fillPath(FlameImages::outline(size), Theme::Colors::accent);
        painter.end();
        icon.addPixmap(QPixmap::fromImage(image));
    }
    return icon;
}

} // namespace cindertop::ui
