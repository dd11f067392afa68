#pragma once

#include <functional>

namespace cindertop::ui {

/// What the windows ask of the program besides its state. All are set; main thread.
struct ProgramActions {
    std::function<void()> openHelp;
    std::function<void()> openTerms;
    std::function<void()> openPrivacyPolicy;
    std::function<void()> openWebsite;
    std::function<void()> closePopover;
    std::function<void()> quit;
    bool canEnterTaskBar = false; ///< while no window is open
};

} // namespace cindertop::ui
