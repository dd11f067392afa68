#pragma once

#include <QWindow>
#include <memory>

namespace cindertop::ui {

class OnboardingPresentation;
class PopoverPresentation;
class SettingsPresentation;

/// Makes the program's windows, hidden at first, on one QML engine, which ends with the object; its windows
/// must end before. What a window presents must outlive it. Main thread.
class Views {
public:
    virtual ~Views() = default;
    /// None when its description cannot be loaded.
    virtual std::unique_ptr<QWindow> makePopover(PopoverPresentation& presentation) = 0;
    virtual std::unique_ptr<QWindow> makeSettings(SettingsPresentation& presentation) = 0;
    virtual std::unique_ptr<QWindow> makeOnboarding(OnboardingPresentation& presentation) = 0;
};

} // namespace cindertop::ui
