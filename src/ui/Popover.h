#pragma once

#include <QPoint>

namespace cindertop::ui {

/// The window that opens from the status item. It closes by itself when the user clicks elsewhere, presses
/// Escape or turns to another program. Main thread.
class Popover {
public:
    virtual ~Popover() = default;
    virtual bool isShown() const = 0;
    /// Opens it at a point of the screen, in front of all windows and with the keyboard's focus.
    virtual void show(const QPoint& point) = 0;
    virtual void close() = 0;
};

} // namespace cindertop::ui
