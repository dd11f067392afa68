#include "ui/views/WindowFit.h"

#include "ui/windows/WindowFrame.h"

#include <QScreen>
#include <utility>

namespace cindertop::ui {

WindowFit::WindowFit(QQuickWindow& window, QQuickItem& view, Wishes wishes)
    : QObject(&window), window_(window), view_(view), wishes_(std::move(wishes)) {
    // The view ends before the window, and with it whatever they tell each other.
    const auto fits = [this] { fit(); };
    connect(&window, &QWindow::widthChanged, &view, [this] { view_.setWidth(window_.width()); });
    connect(&window, &QWindow::heightChanged, &view, [this] { view_.setHeight(window_.height()); });
    if (wishes_.smallest) {
        window_.resize(QSizeF(view_.implicitWidth(), view_.implicitHeight()).toSize());
    } else {
        connect(&view, &QQuickItem::implicitWidthChanged, &view, fits);
        connect(&view, &QQuickItem::implicitHeightChanged, &view, fits);
    }
    connect(&window, &QWindow::visibleChanged, &view, [this](bool isVisible) {
        if (isVisible) {
            fit();
        }
    });
    connect(&window, &QWindow::screenChanged, &view, [this] {
        watchScreen();
        fit();
    });
    watchScreen();
    fit();
    view_.setSize(window_.size());
}

void WindowFit::watchScreen() {
    disconnect(screen_);
    if (const auto* const screen = window_.screen()) {
        screen_ = connect(screen, &QScreen::availableGeometryChanged, &view_, [this] { fit(); });
    }
}

QSize WindowFit::room() const {
    const auto* const screen = window_.screen();
    if (screen == nullptr) {
        return window_.maximumSize();
    }
    const auto size = screen->availableGeometry().size();
    if (!wishes_.overhang) {
        return size.shrunkBy(frameOf(window_));
    }
    const int overhang = wishes_.overhang();
    return size.grownBy({overhang, overhang, overhang, overhang});
}

void WindowFit::fit() {
    if (!wishes_.smallest) {
        hold(QSizeF(view_.implicitWidth(), view_.implicitHeight()).toSize().boundedTo(room()));
        return;
    }
    const auto smallest = wishes_.smallest->boundedTo(room());
    window_.setMinimumSize(smallest);
    const auto size = window_.size().expandedTo(smallest).boundedTo(room());
    if (window_.windowState() == Qt::WindowNoState && size != window_.size()) {
        window_.resize(size);
    }
}

/// The limits go first: a window manager lets no window leave them, and shows no way to resize where there is
/// nothing between them.
void WindowFit::hold(const QSize& size) {
    window_.setMaximumSize(size.expandedTo(window_.minimumSize()));
    window_.setMinimumSize(size);
    window_.setMaximumSize(size);
    window_.resize(size);
}

} // namespace cindertop::ui
