#include "app/AppStateTick.h"
#include "support/Enumeration.h"
#include "support/Wording.h"

#include <chrono>
#include <string>
#include <tuple>

namespace cindertop {

namespace {

constexpr Wording chipTemperature{"SoC {name}", "Chip {name}"};

constexpr std::string_view thermalRead = "thermal state";

/// A terminal that watches looks again within this time.
constexpr std::chrono::seconds lookDuration{10};

DiagnosticLogLevel importanceOf(ThermalLevel level) {
    return level >= ThermalLevel::serious ? DiagnosticLogLevel::warning : DiagnosticLogLevel::info;
}

std::optional<std::string> trendLabel(ThermalTrend trend) {
    switch (trend) {
    case ThermalTrend::rising:
        return "Rising";
    case ThermalTrend::cooling:
        return "Cooling";
    case ThermalTrend::stable:
        break;
    }
    return std::nullopt;
}

} // namespace

void AppState::updateMonitoringState() {
    if (isMonitoringPermitted() && !*published_.isPaused) {
        startThermalMonitoring();
    } else {
        stopThermalMonitoring();
    }
}

void AppState::setPaused(bool paused) {
    const bool isPaused = paused && isMonitoringPermitted();
    const bool hasChanged = isPaused != *published_.isPaused;
    published_.isPaused.set(isPaused);
    if (hasChanged) {
        updateMonitoringState();
    }
    if (isMonitoringPermitted()) {
        log(DiagnosticLogLevel::info, DiagnosticLogCategory::app,
            paused ? "Monitoring paused by user" : "Monitoring resumed by user");
    }
}

void AppState::startThermalMonitoring() {
    if (thermalMonitoringTask_) {
        return;
    }
    log(DiagnosticLogLevel::info, DiagnosticLogCategory::thermal, "Thermal monitoring started");
    thermalMonitoringTask_ = std::make_shared<MonitoringTask>();
    sleepBeforeTick(std::chrono::nanoseconds{0});
}

void AppState::stopThermalMonitoring() {
    const bool wasMonitoring = isMonitoring();
    thermalMonitoringTask_.reset();
    ++stops_;
    sleepWatch_.expectNothing();
    forgetMonitoring();
    publishIdleSnapshots();
    if (wasMonitoring) {
        log(DiagnosticLogLevel::info, DiagnosticLogCategory::thermal, "Thermal monitoring stopped");
    }
    environment_.executor.post([this] {
        environment_.executor.submit(
            [this] {
                engines_.reset();
                std::ignore = thermalHistoryStore_.save(); // tried again at the end
            },
            [] {});
    });
}

void AppState::publishIdleSnapshots() {
    published_.thermalSnapshot.set(ThermalSnapshot::idle());
    published_.systemContextSnapshot.set(SystemContextSnapshot::placeholder());
    published_.processOffenderSnapshot.set(ProcessOffenderSnapshot::empty());
    published_.recommendationSnapshot.set(CinderRecommendationSnapshot::empty());
}

void AppState::forgetMonitoring() {
    nextProcessOffenderSampleDate_ = {};
    nextThermalHistorySampleDate_ = {};
    lastLoggedThermalLevel_.reset();
    lastRecordedHistoryLevel_.reset();
    lastRecordedSustainedPressure_.reset();
    latestThermalScore_.reset();
    latestTemperatures_.clear();
    latestCPUPercent_.reset();
    latestSystemContextSnapshot_.reset();
    failedReads_.clear();
    recommendationEngine_.reset();
    thermalAlertRuleEngine_ = ThermalAlertRuleEngine(environment_.machine.operatingSystem);
}

bool AppState::isCurrent(const Tick& tick) const {
    return thermalMonitoringTask_ && tick.task.lock() == thermalMonitoringTask_;
}

void AppState::refreshThermalState() {
    thermalMonitoringTask_->sleep.reset();
    const auto now = environment_.machine.clock.now();
    const auto uptime = environment_.machine.clock.uptime();
    const auto [awake, hasSlept] = sleepWatch_.look(uptime);
    if (hasSlept) {
        startOver();
    }
    const auto tick = std::make_shared<Tick>(
        Tick{.task = thermalMonitoringTask_,
             .stop = thermalMonitoringTask_->stop.get_token(),
             .now = now,
             .uptime = uptime,
             .awake = awake,
             .followsSleep = hasSlept,
             .configuration = {.usesExperimentalSensors =
                                   published_.settings->experimentalTemperatureSensorsEnabled,
                               .thresholds = ThermalTemperatureThresholds::defaults()},
             .takesCensus =
                 published_.settings->showProcessOffenders && nextProcessOffenderSampleDate_.isDue(awake),
             .isObserved = isObserved(awake),
             .takesCPUUsage = published_.settings->historyEnabled,
             .readings = std::nullopt});
    const auto read = [this, tick] { return takeReadings(*tick); };
    awaitIn(tick, read, [this, tick](std::optional<Readings> readings) {
        if (!readings) {
            reportFailedRead(thermalRead);
            sleepUntilNextTick(*tick);
            return;
        }
        tick->readings = std::move(readings);
        publishReadings(tick);
    });
}

AppState::Readings AppState::takeReadings(const Tick& tick) {
    if (tick.followsSleep) {
        engines_.reset();
        thermalHistoryStore_.noteSleep();
    }
    engines_.setHardwareObserved(tick.isObserved);
    const auto score = engines_.readScore(tick.configuration);
    Readings readings{.score = score,
                      .context = engines_.context.snapshot(score, tick.now, tick.awake),
                      .temperatures = engines_.temperatures(),
                      .census = std::nullopt,
                      .cpuPercent = std::nullopt};
    if (tick.takesCensus && !tick.stop.stop_requested()) {
        readings.census = attempt([&] { return takeCensus(tick.now, tick.awake, std::nullopt); });
    }
    if (tick.takesCPUUsage) {
        readings.cpuPercent = engines_.cpuUsage.sample(tick.now);
    }
    return readings;
}

void AppState::publishReadings(const TickPointer& tick) {
    latestThermalScore_ = tick->score();
    latestTemperatures_ = std::move(tick->readings->temperatures);
    sensorCourses_.note(latestTemperatures_, tick->awake);
    latestSystemContextSnapshot_ = tick->context();
    published_.thermalSnapshot.set(ThermalSnapshot::of(tick->score(), temperatures_));
    if (!isCurrent(*tick)) { // an observer may have stopped the monitoring
        return;
    }
    published_.systemContextSnapshot.set(tick->context());
    if (isCurrent(*tick)) {
        refreshProcessOffenders(tick);
    }
}

void AppState::completeTick(const Tick& tick) {
    if (!isCurrent(tick)) {
        return;
    }
    logThermalLevelChangeIfNeeded(tick.score());
    diagnosticLogService_.saveWhenDue();
    if (tickObserver_) {
        tickObserver_();
    }
    if (isCurrent(tick)) {
        sleepUntilNextTick(tick);
    }
}

void AppState::sleepUntilNextTick(const Tick& tick) {
    const auto delay =
        isFromBeforeSleep(tick) ? Seconds{0} : tickDelay(published_.thermalSnapshot->recommendedSamplingHz);
    sleepBeforeTick(std::chrono::duration_cast<std::chrono::nanoseconds>(delay));
}

void AppState::sleepBeforeTick(std::chrono::nanoseconds delay) {
    sleepWatch_.expectAfter(environment_.machine.clock.uptime(), delay);
    thermalMonitoringTask_->sleep = environment_.timers.start(delay, [this] { refreshThermalState(); });
}

void AppState::logThermalLevelChangeIfNeeded(const ThermalScore& score) {
    if (lastLoggedThermalLevel_ == score.level) {
        return;
    }
    lastLoggedThermalLevel_ = score.level;
    log(importanceOf(score.level), DiagnosticLogCategory::thermal, "Thermal level changed",
        {{"level", std::string(label(score.level))},
         {"score", std::to_string(score.score)},
         {"dataSource", std::string(caseName(score.dataSource))},
         {"systemState", std::string(caseName(score.systemState))},
         {"pressureLevel", std::string(caseName(score.pressureLevel))},
         {"trend", std::string(caseName(score.trend))}});
}

void AppState::reportFailedRead(std::string_view step) {
    if (failedReads_.insert(step).second) {
        log(DiagnosticLogLevel::error, DiagnosticLogCategory::thermal, "Reading failed",
            {{"step", std::string(step)}});
    }
}

void AppState::noteLook() {
    lookedAt_ = sleepWatch_.awakeAt(environment_.machine.clock.uptime());
}

bool AppState::isObserved(AwakeTime now) const {
    return lookedAt_ && now - *lookedAt_ < lookDuration;
}

std::optional<MachineSnapshot> AppState::machineSnapshot() const {
    if (!latestThermalScore_) {
        return std::nullopt;
    }
    return MachineSnapshot{.score = *latestThermalScore_,
                           .context = *published_.systemContextSnapshot,
                           .offenders = *published_.processOffenderSnapshot,
                           .cpuPercent = latestCPUPercent_,
                           .temperatures = temperatures(),
                           .sources = currentSources(),
                           .measuredAt = published_.systemContextSnapshot->measuredAt};
}

std::vector<TemperatureReading> AppState::temperatures() const {
    return sensorCourses_.withRanges(latestTemperatures_);
}

SensorCourses::Steps AppState::temperatureSteps(std::size_t place) const {
    return sensorCourses_.steps(latestTemperatures_, place);
}

std::optional<std::string> AppState::temperatureText(std::optional<double> celsius) const {
    return temperatures_.text(celsius);
}

ThermalAssistantPresentation AppState::makePresentation(const ThermalSnapshot& snapshot) const {
    if (*published_.isPaused) {
        return {.status = ThermalAssistantPresentation::Status::paused,
                .trendLabel = std::nullopt,
                .menuBarTemperatureText = std::nullopt,
                .popoverTemperatureText = std::nullopt,
                .actionMessage = "Monitoring paused."};
    }
    const auto temperature = temperatureText(snapshot.temperatureCelsius);
    const bool showsTemperature = published_.settings->experimentalTemperatureSensorsEnabled ||
                                  published_.settings->menuBarInfoMode == MenuBarInfoMode::temperature;
    const auto& advice = published_.recommendationSnapshot->primaryInsight;
    return {.status = static_cast<ThermalAssistantPresentation::Status>(snapshot.band),
            .trendLabel = advice ? std::nullopt : trendLabel(snapshot.trend),
            .menuBarTemperatureText = temperature,
            .popoverTemperatureText =
                temperature && showsTemperature
                    ? std::optional(
                          withName(chipTemperature.in(environment_.machine.operatingSystem), *temperature))
                    : std::nullopt,
            .actionMessage = advice ? std::optional(advice->message) : std::nullopt};
}

} // namespace cindertop
