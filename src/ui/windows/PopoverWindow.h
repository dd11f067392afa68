#pragma once

#include "ui/presentation/PopoverPresentation.h"
#include "ui/windows/Views.h"

#include <QObject>
#include <QPoint>
#include <functional>
#include <memory>

namespace cindertop::ui {

/// The window that opens from the status item. It closes by itself when the user clicks elsewhere, presses
/// Escape or turns to another program. Main thread.
class Popover {
public:
    virtual ~Popover() = default;
    virtual bool isShown() const = 0;
    /// Opens it at a point of the screen, at the pointer where that is (0, 0), in front of all windows and
    /// with the keyboard's focus.
    virtual void show(const QPoint& point) = 0;
    virtual void close() = 0;
};

/// The popover: made when it opens, gone when it closes, so that the resting program keeps nothing of it.
/// Main thread.
class PopoverWindow final : public QObject, public Popover {
public:
    struct Parts {
        std::function<std::shared_ptr<Views>()> views; ///< none where the windows cannot be loaded
        std::function<std::unique_ptr<PopoverPresentation>()> presentation;
        std::function<void()> didCloseByItself;
    };

    explicit PopoverWindow(Parts parts);
    ~PopoverWindow() override;

    bool isShown() const override { return window_ && window_->isVisible(); }

    void show(const QPoint& clicked) override;
    void close() override;

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void place(const QPoint& point);
    void closeByItself();
    void release();

    Parts parts_;
    std::shared_ptr<Views> views_;
    std::unique_ptr<PopoverPresentation> presentation_;
    std::unique_ptr<QWindow> window_; ///< goes before what made it and what it shows
    bool wasActive_ = false;
};

} // namespace cindertop::ui
