#pragma once

namespace cindertop {
class AppState;
}

namespace cindertop::agent {

/// Qt ends the program on the spot when the display server goes away, as it does at the end of many sessions:
/// with exit() on X11, with _exit() on Wayland. While this lives, what is kept is written before that, and
/// the program ends with status 1. One at a time; main thread.
class DisplayLoss {
public:
    /// `state` must outlive this.
    explicit DisplayLoss(AppState& state);
    ~DisplayLoss();
    DisplayLoss(const DisplayLoss&) = delete;
    DisplayLoss& operator=(const DisplayLoss&) = delete;
};

} // namespace cindertop::agent
