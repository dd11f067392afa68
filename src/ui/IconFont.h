#pragma once

#include <QString>

namespace cindertop::ui {

/// The family of the icon font, which the first call registers with Qt. Empty when Qt refuses it. Needs a
/// QGuiApplication.
const QString& iconFontFamily();

} // namespace cindertop::ui
