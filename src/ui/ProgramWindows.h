#pragma once

#include "app/AppState.h"
#include "app/Windows.h"
#include "ui/Appearance.h"
#include "ui/OnboardingPresentation.h"
#include "ui/PopoverWindow.h"
#include "ui/ProgramActions.h"
#include "ui/SettingsPresentation.h"
#include "ui/WindowController.h"

#include <QString>
#include <functional>
#include <memory>
#include <optional>

namespace cindertop::ui {

/// The window of the onboarding with what it shows.
struct OnboardingWindowController {
    OnboardingPresentation presentation;
    std::unique_ptr<WindowController> window; ///< goes first

    OnboardingWindowController(AppState& state, const ProgramActions& actions)
        : presentation(state, actions) {}
};

/// The window of the settings with what it shows.
struct SettingsWindowController {
    SettingsPresentation presentation;
    std::unique_ptr<WindowController> window; ///< goes first

    SettingsWindowController(AppState& state, const ProgramActions& actions) : presentation(state, actions) {}
};

/// Opens and closes the windows. The library that draws them is loaded for the first, and its engine ends
/// with the last one open. Main thread.
class ProgramWindows final : public Windows {
public:
    using Problem = std::function<void(const QString& sentence)>;

    /// `appearance` must outlive this; `problem` is told when windows cannot be shown.
    ProgramWindows(Appearance& appearance, Problem problem);
    ~ProgramWindows() override;

    /// Windows open from now on. `state` must outlive this, or the windows be closed before with `closeAll`.
    void present(AppState& state, ProgramActions actions, std::function<void()> popoverDidClose);
    void closeAll();

    void showOnboarding() override;
    void closeOnboarding() override;
    void showSettings() override;

    /// Only after `present`.
    Popover& popover() { return *popover_; }

    /// Whether the windows that open have an entry in the task bar, and those that are open.
    void setTaskBarEntry(bool isShown);
    /// Brings the open windows to the front.
    void activate();

private:
    std::shared_ptr<Views> views();
    template <typename Controller, typename Make>
    void show(std::unique_ptr<Controller>& controller, const QString& title, Make make);

    Appearance& appearance_;
    Problem problem_;
    AppState* state_ = nullptr;
    ProgramActions actions_;
    bool hasTaskBarEntry_ = false;
    std::weak_ptr<Views> views_;
    std::unique_ptr<OnboardingWindowController> onboarding_;
    std::unique_ptr<SettingsWindowController> settings_;
    std::unique_ptr<PopoverWindow> popover_;
};

} // namespace cindertop::ui
