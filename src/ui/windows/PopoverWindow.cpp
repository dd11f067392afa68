#include "ui/windows/PopoverWindow.h"

#include "ui/windows/X11.h"

#include <QCursor>
#include <QEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScreen>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <utility>

namespace cindertop::ui {

namespace {

constexpr int gapToItem = 4;

/// A window manager that gives the window no focus by then never will.
constexpr std::chrono::milliseconds longestWaitForFocus{500};

const QScreen* screenAt(const QPoint& point) {
    const auto* const screen = QGuiApplication::screenAt(point);
    return screen != nullptr ? screen : QGuiApplication::primaryScreen();
}

} // namespace

PopoverWindow::PopoverWindow(Parts parts) : parts_(std::move(parts)) {}

PopoverWindow::~PopoverWindow() {
    if (window_) {
        window_->removeEventFilter(this);
    }
}

/// Some panels do not know where they were clicked and say (0, 0).
void PopoverWindow::show(const QPoint& clicked) {
    const auto point = clicked.isNull() ? QCursor::pos() : clicked;
    release();
    views_ = parts_.views();
    if (!views_) {
        return;
    }
    presentation_ = parts_.presentation();
    window_ = views_->makePopover(*presentation_);
    if (!window_) {
        release();
        return;
    }
    window_->setTitle("Cindertop");
    window_->setFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                      Qt::NoDropShadowWindowHint);
    window_->installEventFilter(this);
    place(point);
    // The content grows and shrinks with what there is to tell.
    connect(window_.get(), &QWindow::heightChanged, this, [this, point] { place(point); });
    connect(window_.get(), &QWindow::activeChanged, this, [this] {
        if (window_->isActive()) {
            wasActive_ = true;
            window_->setMouseGrabEnabled(false);
        } else if (wasActive_) {
            closeByItself();
        }
    });
    window_->show();
    window_->raise();
    window_->requestActivate();
    // Without the focus it would not learn that the user turns to something else: it sees every click
    // instead.
    QTimer::singleShot(longestWaitForFocus, window_.get(), [this] {
        // Wayland's plugin grabs for other kinds of windows only, and warns.
        if (x11() != nullptr && window_->isVisible() && !window_->isActive()) {
            window_->setMouseGrabEnabled(true);
        }
    });
}

void PopoverWindow::close() {
    if (!window_) {
        return;
    }
    window_->hide();
    // The call may come from one of its own buttons.
    QTimer::singleShot(0, this, [this] {
        if (window_ && !window_->isVisible()) {
            release();
        }
    });
}

bool PopoverWindow::eventFilter(QObject* watched, QEvent* event) {
    const bool isEscape = event->type() == QEvent::KeyPress &&
                          static_cast<const QKeyEvent*>(event)->key() == Qt::Key_Escape; // NOLINT
    if (isEscape) {
        close();
        return true;
    }
    const bool isOutside =
        event->type() == QEvent::MouseButtonPress &&
        !QRect(QPoint(), window_->size()).contains(static_cast<const QMouseEvent*>(event)->pos()); // NOLINT
    if (isOutside || event->type() == QEvent::Close) {
        closeByItself();
    }
    return QObject::eventFilter(watched, event);
}

/// Below a point in the screen's upper half, above one in its lower half, and whole on the screen but for its
/// shadow. A Wayland compositor places it as it likes.
void PopoverWindow::place(const QPoint& point) {
    const auto* const screen = screenAt(point);
    if (screen == nullptr) {
        return;
    }
    const auto space = screen->availableGeometry();
    const int margin = presentation_->shadowMargin();
    const auto size = window_->size().shrunkBy({margin, margin, margin, margin});
    const bool isBelow = point.y() < screen->geometry().center().y();
    const int wantedY = isBelow ? point.y() + gapToItem : point.y() - gapToItem - size.height();
    const int wantedX = point.x() - size.width() / 2;
    const int rightmost = std::max(space.left(), space.right() + 1 - size.width());
    const int lowest = std::max(space.top(), space.bottom() + 1 - size.height());
    window_->setPosition(std::clamp(wantedX, space.left(), rightmost) - margin,
                         std::clamp(wantedY, space.top(), lowest) - margin);
}

void PopoverWindow::closeByItself() {
    if (!window_ || !window_->isVisible()) {
        return;
    }
    close();
    parts_.didCloseByItself();
}

void PopoverWindow::release() {
    if (window_) {
        window_->removeEventFilter(this);
        window_->disconnect(this);
    }
    window_.reset();
    presentation_.reset();
    views_.reset();
    wasActive_ = false;
}

} // namespace cindertop::ui
