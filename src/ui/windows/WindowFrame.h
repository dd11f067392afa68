#pragma once

#include <QMargins>
#include <QWindow>

namespace cindertop::ui {

/// What the desktop draws around a window. It is known once the window is shown; before, a usual frame
/// counts.
inline QMargins frameOf(const QWindow& window) {
    constexpr QMargins usual{4, 36, 4, 4};
    const auto margins = window.isVisible() ? window.frameMargins() : QMargins();
    return margins.isNull() ? usual : margins;
}

} // namespace cindertop::ui
