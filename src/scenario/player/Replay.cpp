#include "scenario/player/Replay.h"

#include "app/Executor.h"
#include "scenario/machine/VirtualClock.h"
#include "support/Enumeration.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstddef>
#include <optional>
#include <utility>

namespace cindertop::replay {

namespace {

Json metadataJson(const DiagnosticMetadata& metadata) {
    auto object = Json::object();
    for (const auto& [key, value] : metadata) {
        object[key] = value;
    }
    return object;
}

} // namespace

ReplayLines::ReplayLines(const Clock& clock, Instant start, std::function<void(std::string)> write)
    : clock_(clock), start_(start), write_(std::move(write)) {}

Json ReplayLines::line(const char* event) const {
    return {{"t", secondsBetween(start_, clock_.now()).count()}, {"event", event}};
}

void ReplayLines::tick(const AppState& state) {
    const auto& published = state.published();
    auto json = line("tick");
    json["score"] = encodeJson(*state.latestThermalScore());
    json["context"] = encodeJson(*published.systemContextSnapshot);
    json["offenders"] = encodeJson(*published.processOffenderSnapshot, start_);
    json["recommendation"] = encodeJson(*published.recommendationSnapshot);
    json["presentation"] = encodeJson(state.makePresentation(*published.thermalSnapshot));
    json["notificationState"] = caseName(*published.systemNotificationState);
    ++ticks_;
    write_(compactText(json));
}

void ReplayLines::history(const ThermalHistorySample& sample, const ThermalMonitoringSnapshot& result) {
    auto json = line("history");
    json["sample"] = encodeJson(sample, start_);
    json["todaySummary"] = encodeJson(result.todaySummary, start_);
    json["sampleCount"] = result.samples.size();
    ++samples_;
    write_(compactText(json));
}

void ReplayLines::notification(const UserNotificationRequest& request) {
    auto json = line("notification");
    json["identifier"] = request.identifier;
    json["title"] = request.content.title;
    json["body"] = request.content.body;
    json["category"] = request.content.categoryIdentifier;
    json["thread"] = request.content.threadIdentifier;
    ++notifications_;
    write_(compactText(json));
}

void ReplayLines::log(const DiagnosticLogEvent& event) {
    auto json = line("log");
    json["level"] = caseName(event.level);
    json["category"] = caseName(event.category);
    json["message"] = event.message;
    json["metadata"] = metadataJson(event.metadata);
    write_(compactText(json));
}

void ReplayLines::unifiedLog(const simulated::UnifiedLogLine& logged) {
    auto json = line("unifiedLog");
    json["level"] = logged.level == UnifiedLogLevel::error ? "error" : "info";
    json["message"] = logged.text;
    write_(compactText(json));
}

void ReplayLines::end() {
    auto json = line("end");
    json["ticks"] = ticks_;
    json["historySamples"] = samples_;
    json["notifications"] = notifications_;
    write_(compactText(json));
}

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
