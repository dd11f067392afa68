#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QWindow>
#include <functional>

namespace cindertop::ui {

/// A minimised window, which the task bar lists while no other of the program's is open. Where the
/// window manager does not keep it minimised, there is none. Main thread.
class TaskBarEntry : public QObject {
public:
    /// `chosen` is called when the user picks the entry, each time, and may destroy it a moment later.
    explicit TaskBarEntry(std::function<void()> chosen);

    /// Whether the desktop can list such a window: an X11 display with a window manager. No protocol of
    /// Wayland starts a window minimised. Needs a QGuiApplication.
    static bool isPossible();

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void minimize();

    std::function<void()> chosen_;
    QWindow window_;
    QElapsedTimer sinceMinimized_;
};

} // namespace cindertop::ui
