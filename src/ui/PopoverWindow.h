#pragma once

#include "ui/Popover.h"
#include "ui/PopoverPresentation.h"
#include "ui/Views.h"

#include <QObject>
#include <functional>
#include <memory>

namespace cindertop::ui {

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

    void show(const QPoint& point) override;
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
