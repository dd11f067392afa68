#pragma once

#include <QByteArray>
#include <QString>

namespace cindertop::ui {

/// The icon font as a font file; it stays where it is.
QByteArray iconFontData();

/// The family of the icon font, which the first call registers with Qt. Empty when Qt refuses it. Needs a
/// QGuiApplication.
const QString& iconFontFamily();

} // namespace cindertop::ui
