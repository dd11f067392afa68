#include "ui/windows/WindowController.h"

#include "ui/theme/ProgramIcon.h"
#include "ui/windows/WindowFrame.h"

#include <QEvent>
#include <QScreen>
#include <QTimer>
#include <algorithm>
#include <utility>

namespace cindertop::ui {

WindowController::WindowController(std::shared_ptr<Views> views, std::unique_ptr<QWindow> window,
                                   const QString& title, std::function<void()> didClose)
    : views_(std::move(views)), window_(std::move(window)), didClose_(std::move(didClose)) {
    window_->setTitle(title);
    window_->setIcon(programIcon());
    window_->installEventFilter(this);
    // A window as large as its content grows where it stands.
    connect(window_.get(), &QWindow::widthChanged, this, &WindowController::keepOnScreen);
    connect(window_.get(), &QWindow::heightChanged, this, &WindowController::keepOnScreen);
}

WindowController::~WindowController() {
    window_->removeEventFilter(this);
    window_->disconnect(this);
}

void WindowController::show() {
    const bool isFirst = !window_->isVisible();
    const auto shape = window_->windowStates() & ~Qt::WindowMinimized;
    if (shape == Qt::WindowNoState) {
        centre();
    }
    window_->setWindowStates(shape);
    window_->setVisible(true);
    if (isFirst) {
        firstSize_ = window_->size();
    }
    activate();
}

std::optional<QSize> WindowController::chosenSize() const {
    const bool isChosen = window_->windowStates() == Qt::WindowNoState && window_->size() != firstSize_;
    return isChosen ? std::optional(window_->size()) : std::nullopt;
}

void WindowController::activate() {
    window_->raise();
    window_->requestActivate();
}

void WindowController::close() {
    window_->close();
}

bool WindowController::eventFilter(QObject* watched, QEvent* event) {
    // A minimised window is not hidden.
    if (event->type() == QEvent::Close && !std::exchange(isClosed_, true)) {
        // The window is still at work on this event.
        QTimer::singleShot(0, this, didClose_);
    }
    return QObject::eventFilter(watched, event);
}

void WindowController::keepOnScreen() {
    const auto* const screen = window_->screen();
    const bool isUsers = window_->minimumSize() != window_->maximumSize();
    if (screen == nullptr || isUsers || !window_->isVisible()) {
        return;
    }
    const auto margins = frameOf(*window_);
    const auto space = screen->availableGeometry();
    const auto frame = window_->geometry().marginsAdded(margins);
    const QPoint end(space.right() + 1 - frame.width(), space.bottom() + 1 - frame.height());
    const QPoint place(std::max(space.left(), std::min(frame.left(), end.x())),
                       std::max(space.top(), std::min(frame.top(), end.y())));
    if (place != frame.topLeft()) {
        window_->setPosition(place + QPoint(margins.left(), margins.top()));
    }
}

void WindowController::centre() {
    const auto* const screen = window_->screen();
    if (screen == nullptr) {
        return;
    }
    const auto margins = frameOf(*window_);
    auto frame = QRect(QPoint(), window_->size()).marginsAdded(margins);
    frame.moveCenter(screen->availableGeometry().center());
    window_->setPosition(frame.marginsRemoved(margins).topLeft());
}

} // namespace cindertop::ui
