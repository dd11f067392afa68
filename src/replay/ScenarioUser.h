#pragma once

#include "app/AppState.h"
#include "platform/Timers.h"
#include "platform/simulated/Scenario.h"

#include <cstddef>
#include <functional>
#include <memory>

namespace cindertop::replay {

/// Carries out a scenario's commands in real or scaled time, and tells when the scenario is over.
class ScenarioUser {
public:
    /// Carries out what is due already. All that is referred to must outlive this; `onEnd` runs once, later.
    ScenarioUser(AppState& state, const simulated::Scenario& scenario, Timers& timers,
                 std::function<void()> onEnd);

private:
    Instant now() const { return state_.environment().machine.clock.now(); }

    Instant end() const { return scenario_.start + scenario_.duration; }

    /// Of the next command before the end, else the end.
    Instant nextInstant() const;
    void carryOutDueCommands();
    void waitForNextInstant();
    void goOn();

    AppState& state_;
    const simulated::Scenario& scenario_;
    Timers& timers_;
    std::function<void()> onEnd_;
    std::size_t nextCommand_ = 0;
    std::unique_ptr<Timer> timer_;
};

} // namespace cindertop::replay
