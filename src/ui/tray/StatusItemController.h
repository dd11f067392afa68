#pragma once

#include "app/AppState.h"
#include "ui/theme/FlameImages.h"
#include "ui/tray/StatusItem.h"
#include "ui/tray/StatusLabel.h"
#include "ui/windows/PopoverWindow.h"

#include <QPoint>
#include <array>
#include <chrono>
#include <memory>
#include <optional>

namespace cindertop::ui {

/// Keeps the status item showing the state of the program, and opens the popover from it. Main thread.
class StatusItemController {
public:
    /// The references must outlive this. `timers` follow the user's time, also where the program plays a
    /// scenario at another speed. Needs a QGuiApplication.
    StatusItemController(AppState& appState, StatusItem& statusItem, Popover& popover, Timers& timers);
    ~StatusItemController();
    StatusItemController(const StatusItemController&) = delete;
    StatusItemController& operator=(const StatusItemController&) = delete;

    /// The click on the item, which happened at `point` of the screen.
    void togglePopover(const QPoint& point);

    /// The popover has closed by itself because the user clicked elsewhere or turned to another program. A
    /// click on the item does that too, before the desktop tells of the click.
    void popoverDidClose();

private:
    enum class Fade { in, out };

    void observe();
    void renderLater();
    void render();
    void showToolTip(const ThermalAssistantPresentation& presentation);

    void apply(std::optional<StatusLabel> label);
    void makeRoom(const std::optional<StatusLabel>& label);
    void draw(const StatusLabel& label, double opacity);
    void fadeIn(const StatusLabel& label);
    void fadeOut(const StatusLabel& label);
    void continueFadeAfter(std::chrono::milliseconds delay, Fade fade, StatusLabel label, int step);
    /// `step` counts from 1.
    void continueFade(Fade fade, const StatusLabel& label, int step);

    AppState& appState_;
    StatusItem& statusItem_;
    Popover& popover_;
    Timers& timers_;
    FlameImages images_ = FlameImages::draw();
    std::unique_ptr<Timer> rendering_;           ///< soon, because a setting has changed
    std::unique_ptr<Timer> statusLabelFadeTask_; ///< the next step of the fade
    std::unique_ptr<Timer> closingClick_;        ///< while the click that closed the popover may still arrive
    std::optional<StatusLabel> renderedStatusLabel_;
    std::array<QPropertyNotifier, 5> observations_; ///< last: they go first
};

} // namespace cindertop::ui
