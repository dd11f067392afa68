#include "replay/ScenarioUser.h"

#include "replay/PlayedProgram.h"

#include <algorithm>
#include <utility>

namespace cindertop::replay {

ScenarioUser::ScenarioUser(AppState& state, const simulated::Scenario& scenario, Timers& timers,
                           std::function<void()> onEnd)
    : state_(state), scenario_(scenario), timers_(timers), onEnd_(std::move(onEnd)) {
    carryOutDueCommands();
    waitForNextInstant();
}

Instant ScenarioUser::nextInstant() const {
    if (nextCommand_ == scenario_.commands.size()) {
        return end();
    }
    return std::min(scenario_.start + scenario_.commands[nextCommand_].at, end());
}

void ScenarioUser::carryOutDueCommands() {
    while (nextInstant() <= now() && nextInstant() < end()) {
        PlayedProgram::carryOut(state_, scenario_.commands[nextCommand_++]);
    }
}

void ScenarioUser::waitForNextInstant() {
    timer_ = timers_.start(nextInstant() - now(), [this] { goOn(); });
}

void ScenarioUser::goOn() {
    carryOutDueCommands();
    if (now() < end()) { // also when the timer was early
        waitForNextInstant();
        return;
    }
    onEnd_();
}

} // namespace cindertop::replay
