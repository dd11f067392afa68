#pragma once

#include <QObject>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSize>
#include <functional>
#include <optional>

namespace cindertop::ui {

/// Keeps a window and its view at one size, which is never larger than the screen leaves room for. What the
/// view would like is its implicit size. Lives as long as the window. Main thread.
class WindowFit : public QObject {
public:
    struct Wishes {
        /// The user sizes the window, down to this. None: it is as large as its view wants to be.
        std::optional<QSize> smallest;
        /// How far a window without a frame may reach beyond the screen on each side, for its shadow. None:
        /// the desktop draws a frame.
        std::function<int()> overhang;
    };

    WindowFit(QQuickWindow& window, QQuickItem& view, Wishes wishes);

private:
    QSize room() const;
    void fit();
    void hold(const QSize& size);
    void watchScreen();

    QQuickWindow& window_;
    QQuickItem& view_;
    Wishes wishes_;
    QMetaObject::Connection screen_;
};

} // namespace cindertop::ui
