#pragma once

#include <QIcon>

namespace cindertop::ui {

/// The flame in the program's colour, for windows and task bars. Needs a QGuiApplication.
QIcon programIcon();

} // namespace cindertop::ui
