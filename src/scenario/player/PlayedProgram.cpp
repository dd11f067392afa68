#include "scenario/player/PlayedProgram.h"

#include "app/LegalTerms.h"
#include "persistence/Preferences.h"

#include <algorithm>
#include <type_traits>
#include <utility>
#include <variant>

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
    timer_ = timers_.start(nextInstant() - now(), [this] { proceed(); });
}

void ScenarioUser::proceed() {
    carryOutDueCommands();
    if (now() < end()) { // also when the timer was early
        waitForNextInstant();
        return;
    }
    onEnd_();
}

namespace {

using simulated::ScenarioError;
using simulated::ScenarioSetting;

/// Preferences as a user would have stored them.
AppSettings settingsOf(const simulated::Scenario& scenario) {
    AppSettingsFields fields = *defaultSettings(scenario.operatingSystem);
    for (const auto& setting : scenario.settings) {
        // Checked before anything is played.
        [[maybe_unused]] const auto result = findPreference(setting.name)->write(fields, setting.value);
    }
    return AppSettings(fields);
}

std::expected<void, ScenarioError> check(const ScenarioSetting& setting) {
    const auto* const preference = findPreference(setting.name);
    if (preference == nullptr || preference->extras.isForLiveMachines) {
        return std::unexpected(
            ScenarioError{setting.path + ": there is no preference \"" + setting.name + "\""});
    }
    AppSettingsFields fields;
    if (const auto result = preference->write(fields, setting.value); !result) {
        return std::unexpected(ScenarioError{setting.path + ": " + setting.name + " " + result.error()});
    }
    return {};
}

/// What each command does.
struct CommandRunner {
    AppState& state;

    void operator()(const simulated::PauseCommand& /*command*/) const { state.setPaused(true); }

    void operator()(const simulated::ResumeCommand& /*command*/) const { state.setPaused(false); }

    void operator()(const simulated::AcceptTermsCommand& /*command*/) const { state.acceptLegalTerms(); }

    void operator()(const simulated::SetCommand& command) const {
        const auto& setting = command.setting;
        // Checked before anything is played.
        [[maybe_unused]] const auto result = state.set(*findPreference(setting.name), setting.value);
    }

    void operator()(const simulated::ResetSettingsCommand& /*command*/) const {
        state.resetSettingsToDefaults();
    }

    void operator()(const simulated::RefreshOffendersCommand& command) const {
        if (command.pinned) {
            state.sampleProcessOffenders(command.pinned, [] {});
        } else {
            state.refreshProcessOffendersNow();
        }
    }
};

} // namespace

PlayedProgram::PlayedProgram(std::shared_ptr<const simulated::Scenario> scenario, const PlayedTime& time,
                             PlayedFiles files, PlayedProgramObserver observer)
    : scenario_(std::move(scenario)),
      time_(time),
      files_(std::move(files)),
      observer_(std::move(observer)),
      machine_(scenario_, time.clock),
      notificationCenter_(scenario_->notifications, observer_.notificationAccepted),
      pressureLog_(std::make_shared<simulated::CapturingUnifiedLog>(observer_.pressureLogged)) {
    AppSettingsStore(defaults_, defaultSettings(scenario_->operatingSystem)).save(settingsOf(*scenario_));
    if (scenario_->termsAccepted) {
        storeTermsAccepted(defaults_);
    }
}

AppStateEnvironment PlayedProgram::environment() {
    auto machine = machine_.services();
    auto pressureReader = DarwinThermalPressureReader::ownOnFirstUse(machine.pressure, pressureLog_);
    const auto& systemValues = machine.systemValues;
    return {.machine = std::move(machine),
            .pressureReader = std::move(pressureReader),
            .timers = time_.timers,
            .executor = time_.executor,
            .systemValues = systemValues,
            .defaults = defaults_,
            .files = files_.files,
            .unifiedLog = diagnosticLog_,
            .notificationCenter = notificationCenter_,
            .loginItem = loginItem_,
            .runningApplications = runningApplications_,
            .calendar = CalendarDays(scenario_->timeZone),
            .temperatures = TemperatureFormatter::plain(scenario_->locale),
            .historyFile = files_.folder / ThermalHistoryStore::defaultFile().filename(),
            .diagnosticFile = files_.folder / DiagnosticLogService::defaultFile().filename(),
            .deployment = DeploymentFile(files_.files, files_.folder / "Info.plist"),
            .architecture = scenario_->machine.architecture,
            .operatingSystemVersion = "Scenario",
            .releasesPage = {},
            .diagnosticObserver = observer_.eventLogged};
}

void PlayedProgram::carryOut(AppState& state, const simulated::ScenarioCommand& command) {
    std::visit(CommandRunner{state}, command.action);
}

std::expected<void, ScenarioError> checkPreferences(const simulated::Scenario& scenario) {
    for (const auto& setting : scenario.settings) {
        if (auto result = check(setting); !result) {
            return result;
        }
    }
    for (const auto& command : scenario.commands) {
        const auto* const set = std::get_if<simulated::SetCommand>(&command.action);
        if (set == nullptr) {
            continue;
        }
        if (auto result = check(set->setting); !result) {
            return result;
        }
    }
    return {};
}

} // namespace cindertop::replay
