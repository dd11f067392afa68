#pragma once

namespace cindertop {

/// The program's windows, as far as its state opens and closes them. Main thread.
class Windows {
public:
    virtual ~Windows() = default;
    /// Opens the window or brings it to the front.
    virtual void showOnboarding() = 0;
    /// Does nothing when the window is not open.
    virtual void closeOnboarding() = 0;
    /// Opens the window or brings it to the front.
    virtual void showSettings() = 0;
};

} // namespace cindertop
