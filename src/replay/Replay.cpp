#include "replay/Replay.h"

#include "app/InlineExecutor.h"
#include "platform/simulated/VirtualClock.h"
#include "replay/ReplayLines.h"

#include <algorithm>
#include <cstddef>
#include <optional>

namespace cindertop::replay {

namespace {

/// Lets one program live through a scenario.
class Player {
public:
    Player(const std::shared_ptr<const simulated::Scenario>& scenario, const PlayedFiles& files,
           const std::function<void(std::string)>& writeLine)
        : scenario_(*scenario),
          clock_(scenario->start),
          lines_(clock_, scenario->start, writeLine),
          program_(scenario, {.clock = clock_, .timers = clock_, .executor = executor_}, files,
                   {.notificationAccepted = [this](const auto& request) { lines_.notification(request); },
                    .eventLogged = [this](const auto& event) { lines_.log(event); },
                    .pressureLogged = [this](const auto& line) { lines_.unifiedLog(line); }}) {}

    /// Nothing starts at the end, so that a scenario without length starts nothing at all.
    void playUntil(Instant end) {
        if (clock_.now() < end) {
            playProgramUntil(end);
        }
        clock_.advanceTo(end);
        lines_.end();
    }

private:
    void playProgramUntil(Instant end) {
        AppState state(program_.environment());
        state.observeTicks([this, &state] { lines_.tick(state); });
        state.observeHistory(
            [this](const auto& sample, const auto& result) { lines_.history(sample, result); });
        executor_.runTasks();
        for (auto next = nextInstant(); next && *next < end; next = nextInstant()) {
            clock_.advanceTo(*next);
            carryOutDueCommands(state);
            runDueTimers();
        }
    }

    Instant instantOf(const simulated::ScenarioCommand& command) const {
        return scenario_.start + command.at;
    }

    /// Of whatever happens next; none when nothing does.
    std::optional<Instant> nextInstant() const {
        const auto timer = clock_.nextDue();
        if (nextCommand_ == scenario_.commands.size()) {
            return timer;
        }
        const auto command = instantOf(scenario_.commands[nextCommand_]);
        return timer ? std::min(*timer, command) : command;
    }

    void carryOutDueCommands(AppState& state) {
        while (nextCommand_ < scenario_.commands.size() &&
               instantOf(scenario_.commands[nextCommand_]) <= clock_.now()) {
            PlayedProgram::carryOut(state, scenario_.commands[nextCommand_]);
            ++nextCommand_;
            executor_.runTasks();
        }
    }

    void runDueTimers() {
        while (clock_.runNextDue()) {
            executor_.runTasks();
        }
    }

    const simulated::Scenario& scenario_;
    simulated::VirtualClock clock_;
    InlineExecutor executor_;
    ReplayLines lines_;
    PlayedProgram program_;
    std::size_t nextCommand_ = 0;
};

} // namespace

void replay(const std::shared_ptr<const simulated::Scenario>& scenario, std::chrono::nanoseconds duration,
            const PlayedFiles& files, const std::function<void(std::string)>& writeLine) {
    Player player(scenario, files, writeLine);
    player.playUntil(scenario->start + std::min(duration, scenario->duration));
}

} // namespace cindertop::replay
