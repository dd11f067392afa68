#pragma once

#include <QQuickImageProvider>

namespace cindertop::ui {

/// The pictures of "image://application/IDENTIFIER/NAME" (ui/ApplicationIcon.h): the application's icon from
/// the desktop's icon theme, or where it has none a coloured tile with the name's first letter.
class ApplicationIconProvider final : public QQuickImageProvider {
public:
    ApplicationIconProvider();

    /// Called on the main thread.
    QPixmap requestPixmap(const QString& id, QSize* size, const QSize& requestedSize) override;
};

} // namespace cindertop::ui
