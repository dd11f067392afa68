#pragma once

#include <QWindow>

namespace cindertop::ui {

/// Whether the desktop's task bar lists a window of X11, before or after it is shown. Elsewhere nothing
/// happens: no protocol of Wayland can ask for it.
void setTaskBarEntry(QWindow& window, bool isShown);

/// Whether windows can be translucent: an X11 screen without a compositor paints what lies behind them black.
bool hasCompositor();

} // namespace cindertop::ui
