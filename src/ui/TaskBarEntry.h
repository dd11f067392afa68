#pragma once

#include <QWindow>

namespace cindertop::ui {

/// Whether the desktop's task bar lists a window of X11, before or after it is shown. Elsewhere nothing
/// happens: no protocol of Wayland can ask for it.
void setTaskBarEntry(QWindow& window, bool isShown);

} // namespace cindertop::ui
