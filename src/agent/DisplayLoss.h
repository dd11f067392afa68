#pragma once

namespace cindertop {
class AppState;
}

namespace cindertop::agent {

/// Qt ends the program with exit() when the display server goes away, as it does at the end of many sessions.
/// While this lives, the state's files are written before the program ends like that, with status 1. One at a
/// time; main thread.
class DisplayLoss {
public:
    /// `state` must outlive this.
    explicit DisplayLoss(AppState& state);
    ~DisplayLoss();
    DisplayLoss(const DisplayLoss&) = delete;
    DisplayLoss& operator=(const DisplayLoss&) = delete;
};

} // namespace cindertop::agent
