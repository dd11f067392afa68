#pragma once

#include "ui/windows/Views.h"

#include <QObject>
#include <QSize>
#include <QString>
#include <functional>
#include <memory>
#include <optional>

namespace cindertop::ui {

/// One ordinary window of the program, from its first showing until it closes. Main thread.
class WindowController : public QObject {
public:
    /// `views` made `window`. `didClose` is called once, some time after the window has closed, and may
    /// destroy the controller.
    WindowController(std::shared_ptr<Views> views, std::unique_ptr<QWindow> window, const QString& title,
                     std::function<void()> didClose);
    ~WindowController() override;

    /// Centres the window on its screen, and brings it to the front of all others.
    void show();
    /// Brings it to the front where it is.
    void activate();
    void close();

    /// The size that the user gave the window since it was shown; none where it has still its first size, and
    /// while it fills the screen.
    std::optional<QSize> chosenSize() const;

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void centre();
    void keepOnScreen();

    std::shared_ptr<Views> views_;
    std::unique_ptr<QWindow> window_; ///< goes before what made it
    std::function<void()> didClose_;
    QSize firstSize_; ///< when it was shown
    bool isClosed_ = false;
};

} // namespace cindertop::ui
