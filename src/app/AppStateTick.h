#pragma once

#include "app/AppState.h"

#include <memory>
#include <optional>
#include <stop_token>
#include <utility>
#include <vector>

namespace cindertop {

/// One run of the monitoring, from a start to its stop. Whoever holds it in a callback holds it weakly: its
/// end cancels the sleep and tells work that has not begun not to.
struct AppState::MonitoringTask {
    std::stop_source stop;
    std::unique_ptr<Timer> sleep;

    MonitoringTask() = default;
    MonitoringTask(const MonitoringTask&) = delete;
    MonitoringTask& operator=(const MonitoringTask&) = delete;

    ~MonitoringTask() { stop.request_stop(); }
};

struct AppState::Census {
    ProcessOffenderSnapshot offenders;
    std::vector<SourceStatus> sources;
};

struct AppState::Readings {
    ThermalScore score;
    SystemContextSnapshot context;
    std::vector<TemperatureReading> temperatures;
    std::optional<Census> census; ///< none when it failed or was not asked for
    std::optional<double> cpuPercent;
};

/// What the steps of one tick hand on. All that it reads is read in one go: each change to the other thread
/// and back wakes the processor twice.
struct AppState::Tick {
    std::weak_ptr<MonitoringTask> task;
    std::stop_token stop;
    Instant now;   ///< taken once; every step uses it
    Uptime uptime; ///< of the same moment
    AwakeTime awake;
    bool followsSleep; ///< since the tick before
    ThermalEngineConfiguration configuration;
    bool takesCensus;
    bool isObserved;    ///< the list of sensors is being shown
    bool takesCPUUsage; ///< on every tick, so that a share is always that of one tick
    std::optional<Readings> readings;
    bool isAlertWithheld = false;

    const ThermalScore& score() const {
        return readings->score;
    } // NOLINT(bugprone-unchecked-optional-access)

    const SystemContextSnapshot& context() const { return readings->context; }
};

template <typename Work, typename Next>
void AppState::awaitIn(const TickPointer& tick, Work work, Next next) {
    evaluate(environment_.executor, std::move(work),
             [this, tick, next = std::move(next)](auto result) mutable {
                 if (isCurrent(*tick)) {
                     next(std::move(result));
                 }
             });
}

} // namespace cindertop
