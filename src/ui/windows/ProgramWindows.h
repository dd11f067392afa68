#pragma once

#include "app/AppState.h"
#include "app/Windows.h"
#include "ui/presentation/OnboardingPresentation.h"
#include "ui/presentation/ProgramActions.h"
#include "ui/presentation/SettingsPresentation.h"
#include "ui/theme/Appearance.h"
#include "ui/windows/PopoverWindow.h"
#include "ui/windows/TaskBarEntry.h"
#include "ui/windows/ViewsLibrary.h"
#include "ui/windows/WindowController.h"

#include <QObject>
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

/// An ordinary window with what the popover shows, for desktops whose panel has no place for the program.
struct OverviewWindowController {
    PopoverPresentation presentation;
    std::unique_ptr<WindowController> window; ///< goes first

    OverviewWindowController(AppState& state, ProgramActions actions);
};

enum class WindowKind { onboarding, settings, popover, overview };

/// Opens and closes the windows. The library that draws them is loaded for the first, and its engine ends
/// with the last one open. Main thread.
class ProgramWindows final : public QObject, public Windows {
public:
    struct Problems {
        /// When windows cannot be shown.
        std::function<void(const QString& sentence)> say;
        /// The library of the windows is that of another build, `libraryBuild`. True: the program is about to
        /// restart, and shows this window then.
        std::function<bool(WindowKind asked, const QString& libraryBuild)> startAnew;
    };

    /// `appearance` must outlive this.
    ProgramWindows(Appearance& appearance, Problems problems);
    ~ProgramWindows() override;

    /// Windows open from now on. `state` must outlive this, or the windows be closed before with `closeAll`.
    void present(AppState& state, ProgramActions actions, std::function<void()> popoverDidClose);
    void closeAll();

    void showOnboarding() override;
    void closeOnboarding() override;
    void showSettings() override;

    bool isOnboardingShown() const { return onboarding_ != nullptr; }

    /// Opens the window or brings it to the front. It stays until the user closes it.
    void showOverview();
    /// Without a place in the panel the overview says how to get back to it.
    void setHasStatusItem(bool hasItem);

    /// Only after `present`.
    Popover& popover() { return *popover_; }

    /// Whether the task bar lists the program while none of its windows is open, where that is possible.
    void setTaskBarEntry(bool isShown);
    /// Brings the open windows to the front.
    void activate();

private:
    struct Description {
        WindowKind kind;
        QString title;
    };

    std::shared_ptr<Views> views(WindowKind asked);
    template <typename Controller, typename Make>
    void show(std::unique_ptr<Controller>& controller, const Description& description, Make make);

    /// Stores the sizes that the user gave to open windows.
    void rememberSizes();
    void updateTaskBarEntry();

    Appearance& appearance_;
    Problems problems_;
    ViewsLibrary library_;
    AppState* state_ = nullptr;
    ProgramActions actions_;
    bool wantsTaskBarEntry_ = false;
    bool hasStatusItem_ = true;
    std::weak_ptr<Views> views_;
    std::unique_ptr<OnboardingWindowController> onboarding_;
    std::unique_ptr<SettingsWindowController> settings_;
    std::unique_ptr<OverviewWindowController> overview_;
    std::unique_ptr<PopoverWindow> popover_;
    std::unique_ptr<TaskBarEntry> taskBarEntry_;
};

} // namespace cindertop::ui
