#pragma once

#include <QByteArray>
#include <QString>
#include <string_view>

namespace cindertop::ui {

/// The icon font as a font file; it stays where it is.
QByteArray iconFontData();

/// The family of the icon font, which the first call registers with Qt. Empty when Qt refuses it. Needs a
/// QGuiApplication.
const QString& iconFontFamily();

/// The text that draws a symbol in the icon font; an unknown name is empty.
QString symbolText(std::string_view symbolName);

} // namespace cindertop::ui
