#pragma once

#include "app/AppStateEnvironment.h"
#include "app/AppStateProperties.h"
#include "app/MachineSampler.h"
#include "app/MonitoringEngines.h"
#include "app/SamplingSchedule.h"
#include "app/SleepWatch.h"
#include "app/ThermalAssistantPresentation.h"
#include "assistant/RecommendationEngine.h"
#include "assistant/SystemNotificationService.h"
#include "assistant/ThermalAlertRuleEngine.h"
#include "persistence/AppSettingsStore.h"
#include "persistence/DiagnosticLogService.h"
#include "persistence/Preferences.h"
#include "persistence/ThermalHistoryStore.h"
#include "thermal/SensorCourses.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <expected>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <system_error>
#include <type_traits>
#include <vector>

namespace cindertop {

/// The running program: it owns the engines and stores, runs the monitoring task, and publishes what there is
/// to see. One instance, main thread only. Its destructor first ends the executor's work, and nothing is
/// published after it.
///
/// The task measures, publishes and sleeps in a chain of steps; a stop ends the chain wherever it is, so that
/// a tick in flight publishes, records and delivers nothing more.
class AppState {
public:
    using HistoryObserver =
        std::function<void(const ThermalHistorySample& sample, const ThermalMonitoringSnapshot& result)>;

    /// Loads the settings, and starts to monitor when the terms have been accepted.
    explicit AppState(AppStateEnvironment environment);
    ~AppState();
    AppState(const AppState&) = delete;
    AppState& operator=(const AppState&) = delete;

    /// Ends the work in the background and writes what is kept, as the destructor does. Nothing may be called
    /// afterwards.
    void finish();

    const AppStateProperties& published() const { return published_; }

    DiagnosticLogService& diagnosticLogService() { return diagnosticLogService_; }

    const AppStateEnvironment& environment() const { return environment_; }

    /// Calls `observer` at the end of each completed tick.
    void observeTicks(std::function<void()> observer) { tickObserver_ = std::move(observer); }

    /// Calls `observer` after each sample that was recorded.
    void observeHistory(HistoryObserver observer) { historyObserver_ = std::move(observer); }

    // --- Monitoring

    /// Of the most recent tick; none before the first and after a stop.
    const std::optional<ThermalScore>& latestThermalScore() const { return latestThermalScore_; }

    /// Everything that the most recent tick found; likewise.
    std::optional<MachineSnapshot> machineSnapshot() const;

    /// Every sensor that answered in the most recent tick, with what it has been since the start.
    std::vector<TemperatureReading> temperatures() const;

    /// Of the sensor at this place of `temperatures`.
    SensorCourses::Steps temperatureSteps(std::size_t place) const;

    /// A client looks at the snapshot. What is read for that alone, such as the temperature of drives, is
    /// read from the next tick until some seconds after the last look.
    void noteLook();

    /// The terms have been accepted.
    bool isMonitoringPermitted() const { return *published_.legalTermsAccepted; }

    bool isMonitoring() const { return thermalMonitoringTask_ != nullptr; }

    void updateMonitoringState();
    /// The user's command; before the terms are accepted it does nothing.
    void setPaused(bool paused);
    ThermalAssistantPresentation makePresentation(const ThermalSnapshot& snapshot) const;
    /// What is shown of the published snapshots now. On Linux it names a level only where heat was measured.
    ThermalAssistantPresentation currentPresentation() const;
    /// The published advice; on Linux without statements about heat where none was measured.
    CinderRecommendationSnapshot currentRecommendation() const;

    /// In the unit that the user has chosen.
    const TemperatureFormatter& temperatureFormatter() const { return temperatures_; }

    /// "36°C"; absent without a temperature.
    std::optional<std::string> temperatureText(std::optional<double> celsius) const;

    // --- Assistant

    /// Writes what is recorded and not yet on the disk, and calls `completion` with the result. Before a
    /// sleep, and before somebody else reads the file.
    void saveHistory(std::function<void(FileResult<void>)> completion);
    /// Samples the processes outside the schedule; does nothing while nothing is monitored.
    void refreshProcessOffendersNow();
    /// Samples the processes, also while paused, and calls `completion` when the result is published.
    /// `pinnedOffenderID` stays listed while it uses CPU time.
    void sampleProcessOffenders(std::optional<std::string> pinnedOffenderID,
                                std::function<void()> completion);

    // --- Settings

    /// Changes one preference: stores the record and takes effect at once, also for an equal value. A length
    /// of the history is brought into its range.
    template <typename Value>
    void set(Value AppSettingsFields::* member, std::type_identity_t<Value> value) {
        auto fields = *published_.settings;
        fields.*member = value;
        change(member, fields);
    }

    /// The error says what the value has to be.
    std::expected<void, std::string> set(const Preference& preference, const PreferenceValue& value);
    void applySettings(const AppSettings& settings);
    void resetSettingsToDefaults();

    /// The preferences as they are stored.
    AppSettings currentSettings() const { return AppSettings(*published_.settings); }

    /// Asks the notification centre again, since its server may have been replaced.
    void refreshNotificationState();

    // --- Commands

    void refreshLaunchAtLoginStatus();
    void setLaunchAtLogin(bool enabled);
    /// Whether the application was asked to end.
    bool quitOffenderApplication(const ProcessOffender& offender, bool force);
    /// Asks the user where to; without a desktop it does nothing.
    void exportDiagnosticLogs();
    /// Writes the export, and logs a failure.
    std::expected<void, std::error_code> exportDiagnosticLogs(const std::filesystem::path& destination);
    /// Logs that stored preferences could not be read, and tells the user the sentence about them.
    void reportPreferencesProblem(const std::string& sentence);
    /// False where there is nothing to check: no feed is configured, and a package manager updates programs.
    bool offersUpdateCheck() const;
    void checkForUpdates();

    // --- First run

    void startHardwareCheckIfNeeded();
    void showHardwareDetails(bool isShown);
    void acceptLegalTerms();
    void showOnboardingWindow();
    void showSettingsWindow() const;
    /// The settings, or before the terms are accepted the onboarding.
    void showMainWindow();

private:
    struct MonitoringTask;
    struct Readings;
    struct Tick;
    struct HistoryRecord;
    struct Census;
    using TickPointer = std::shared_ptr<Tick>;

    void start();
    void updateActivationPolicy() const;

    // Monitoring
    bool isHeatUnknown() const;
    std::vector<SourceStatus> currentSources() const;
    void startThermalMonitoring();
    void stopThermalMonitoring();
    void publishIdleSnapshots();
    void forgetMonitoring();
    bool isCurrent(const Tick& tick) const;
    bool isObserved(AwakeTime now) const;
    bool isFromBeforeSleep(const Tick& tick) const;
    void startOver();
    void prepareForSleep(std::function<void()> isReady);
    void continueAfterSleep();
    void refreshThermalState();
    Readings takeReadings(const Tick& tick);
    void publishReadings(const TickPointer& tick);
    void completeTick(const Tick& tick);
    void sleepUntilNextTick(const Tick& tick);
    void sleepBeforeTick(std::chrono::nanoseconds delay);
    void logThermalLevelChangeIfNeeded(const ThermalScore& score);
    /// Logs once a run that a step's read failed.
    void reportFailedRead(std::string_view step);
    /// Runs `work` away from the main thread, then `next` with its answer, unless the tick was stopped.
    template <typename Work, typename Next>
    void awaitIn(const TickPointer& tick, Work work, Next next);

    // Assistant
    Census takeCensus(Instant now, AwakeTime awake, std::optional<std::string> pinnedOffenderID);
    void publishCensus(Census census, AwakeTime awake, ThermalLevel level);
    void refreshProcessOffenders(const TickPointer& tick);
    void refreshRecommendations(const ThermalScore& score, const SystemContextSnapshot& context, Instant now);
    void refreshRecommendationsFromLatest(Instant now);
    void recordThermalHistoryIfNeeded(const TickPointer& tick);
    void publishHistory(const Tick& tick, HistoryRecord record);
    bool isHistorySampleDue(const Tick& tick) const;
    ThermalHistorySample historySample(const Tick& tick) const;
    void evaluateThermalAlerts(const TickPointer& tick);
    void finishDelivery(ThermalAlertKind kind, SystemNotificationState state, std::uint64_t request);
    const ProcessOffender* topOffender() const;
    std::optional<std::string> topOffenderLabel() const;
    void loadHistoryIfEnabled();
    void clearHistory();

    // Settings and commands
    void saveSettings();
    void change(Preference::Member member, const AppSettingsFields& fields);
    void followSensors();
    void followDiagnosticLogs();
    void followProcessOffenders();
    void followHistory();
    void followTemperatureUnit();
    void exportTo(const SaveChoice& choice);
    void showExportSuccess(const std::filesystem::path& destination);
    void surveyHardware();
    void finishHardwareCheck(std::optional<HeatSources> sources, std::optional<PowerContextSnapshot> power);
    void log(DiagnosticLogLevel level, DiagnosticLogCategory category, std::string_view message,
             const DiagnosticMetadata& metadata = {});

    AppStateEnvironment environment_;
    TemperatureFormatter temperatures_; ///< in the unit that the user has chosen
    AppStateProperties published_;

    AppSettingsStore settingsStore_;
    MonitoringEngines engines_;
    ThermalHistoryStore thermalHistoryStore_;
    SystemNotificationService systemNotificationService_;
    RecommendationEngine recommendationEngine_;
    ThermalAlertRuleEngine thermalAlertRuleEngine_;
    DiagnosticLogService diagnosticLogService_;

    std::int32_t ownProcessIdentifier_; ///< kept, since the main thread may not ask the machine's services
    bool didStartHardwareCheck_ = false;
    std::unique_ptr<Timer> hardwareCheckTask_;
    std::shared_ptr<MonitoringTask> thermalMonitoringTask_; ///< present exactly while monitoring runs
    std::unique_ptr<Timer> diagnosticExportStatusTask_;
    bool isApplyingSettings_ = false;
    bool isFinished_ = false;
    SleepWatch sleepWatch_;
    std::optional<ThermalLevel> lastLoggedThermalLevel_;
    std::optional<ThermalLevel> lastRecordedHistoryLevel_;
    std::optional<bool> lastRecordedSustainedPressure_;
    SamplingDate nextThermalHistorySampleDate_;
    SamplingDate nextProcessOffenderSampleDate_;
    std::optional<ThermalScore> latestThermalScore_;
    std::optional<SystemContextSnapshot> latestSystemContextSnapshot_;
    std::vector<TemperatureReading> latestTemperatures_;
    SensorCourses sensorCourses_;
    std::optional<AwakeTime> lookedAt_;           ///< by a terminal or another program
    std::optional<double> latestCPUPercent_;      ///< asked while a history is kept
    std::vector<SourceStatus> latestSources_;     ///< as of the latest census
    std::uint64_t stops_ = 0;                     ///< earlier requests publish nothing
    std::uint64_t notificationStateRequests_ = 0; ///< answers to older requests are ignored
    std::set<std::string_view> failedReads_;

    std::function<void()> tickObserver_;
    HistoryObserver historyObserver_;
    std::shared_ptr<const bool> life_ =
        std::make_shared<const bool>(true); ///< for callbacks that may outlive it
};

} // namespace cindertop
