#include "ui/tray/StatusItemController.h"

#include "ui/theme/Theme.h"

#include <chrono>
#include <utility>

namespace cindertop::ui {

namespace {

constexpr int fadeSteps = 6;
constexpr std::chrono::milliseconds fadeInterval{24};

/// From the press of the button, which closes the popover, to its release, which many desktops report.
constexpr std::chrono::milliseconds clickDuration{300};

/// Most panels on Linux show no label, so the temperature stands here too.
QString toolTipFor(const ThermalAssistantPresentation& presentation, OperatingSystem system) {
    QString text = "Cindertop - " + label(presentation.status);
    if (system == OperatingSystem::gnuLinux && presentation.menuBarTemperatureText) {
        text += ", " + QString::fromStdString(*presentation.menuBarTemperatureText);
    }
    return text;
}

} // namespace

StatusItemController::StatusItemController(AppState& appState, StatusItem& statusItem, Popover& popover,
                                           Timers& timers)
    : appState_(appState), statusItem_(statusItem), popover_(popover), timers_(timers) {
    makeRoom(std::nullopt);
    statusItem_.setImage(images_.active);
    showToolTip(appState_.currentPresentation());
    statusItem_.setAction([this](const QPoint& point) { togglePopover(point); });
    observe();
    renderLater();
}

StatusItemController::~StatusItemController() {
    statusItem_.setAction(nullptr);
}

void StatusItemController::observe() {
    const auto& published = appState_.published();
    const auto later = [this] { renderLater(); };
    observations_ = {
        published.thermalSnapshot.bindable().addNotifier([this] { render(); }),
        published.settings.bindable().addNotifier(later),
        published.isPaused.bindable().addNotifier(later),
        published.legalTermsAccepted.bindable().addNotifier(later),
    };
}

/// What else the same cause changes is drawn with it.
void StatusItemController::renderLater() {
    rendering_ = timers_.start(std::chrono::nanoseconds::zero(), [this] { render(); });
}

void StatusItemController::render() {
    const auto presentation = appState_.currentPresentation();
    statusItem_.setImage(images_.of(presentation.status));
    apply(StatusLabel::of(presentation, appState_.published().settings->menuBarInfoMode));
    showToolTip(presentation);
}

void StatusItemController::showToolTip(const ThermalAssistantPresentation& presentation) {
    statusItem_.setToolTip(toolTipFor(presentation, appState_.environment().machine.operatingSystem));
}

void StatusItemController::apply(std::optional<StatusLabel> label) {
    const auto previous = std::exchange(renderedStatusLabel_, std::move(label));
    makeRoom(renderedStatusLabel_);
    if (renderedStatusLabel_ && previous) {
        statusLabelFadeTask_.reset();
        draw(*renderedStatusLabel_, 1);
    } else if (renderedStatusLabel_) {
        fadeIn(*renderedStatusLabel_);
    } else if (previous) {
        fadeOut(*previous);
    } else {
        statusLabelFadeTask_.reset();
        statusItem_.setTitle(std::nullopt);
    }
}

void StatusItemController::makeRoom(const std::optional<StatusLabel>& label) {
    statusItem_.setLength(label ? std::nullopt : std::optional(Theme::Controls::statusItem));
    statusItem_.setImagePosition(label ? StatusItem::ImagePosition::imageLeft
                                       : StatusItem::ImagePosition::imageOnly);
}

void StatusItemController::draw(const StatusLabel& label, double opacity) {
    statusItem_.setTitle(StatusTitle{.text = " " + label.text, .color = label.color, .opacity = opacity});
}

void StatusItemController::fadeIn(const StatusLabel& label) {
    draw(label, 0);
    continueFadeAfter(std::chrono::milliseconds::zero(), Fade::in, label, 1);
}

void StatusItemController::fadeOut(const StatusLabel& label) {
    makeRoom(label);
    continueFadeAfter(std::chrono::milliseconds::zero(), Fade::out, label, 1);
}

/// Sets the one fade's next step; an earlier fade ends here.
void StatusItemController::continueFadeAfter(std::chrono::milliseconds delay, Fade fade, StatusLabel label,
                                             int step) {
    statusLabelFadeTask_ = timers_.start(
        delay, [this, fade, label = std::move(label), step] { continueFade(fade, label, step); });
}

void StatusItemController::continueFade(Fade fade, const StatusLabel& label, int step) {
    draw(label, static_cast<double>(fade == Fade::in ? step : fadeSteps - step) / fadeSteps);
    if (step < fadeSteps) {
        continueFadeAfter(fadeInterval, fade, label, step + 1);
    } else if (fade == Fade::out) {
        statusItem_.setTitle(std::nullopt);
        makeRoom(std::nullopt);
    }
}

void StatusItemController::togglePopover(const QPoint& point) {
    if (popover_.isShown()) {
        popover_.close();
    } else if (!std::exchange(closingClick_, nullptr)) {
        popover_.show(point);
    }
}

void StatusItemController::popoverDidClose() {
    closingClick_ = timers_.start(clickDuration, [this] { closingClick_.reset(); });
}

} // namespace cindertop::ui
