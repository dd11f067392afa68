#pragma once

namespace cindertop::ui {

/// Whether the desktop composes its windows now, so that one may be translucent: always but on an X11 display
/// without a compositing manager. Needs a QGuiApplication.
bool hasCompositor();

} // namespace cindertop::ui
