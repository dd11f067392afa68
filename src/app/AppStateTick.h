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

struct AppState::Readings {
    ThermalScore score;
    SystemContextSnapshot context;
    std::vector<TemperatureReading> temperatures;
};

/// What the steps of one tick hand on.
struct AppState::Tick {
    std::weak_ptr<MonitoringTask> task;
    std::stop_token stop;
    Instant now; ///< taken once; every step uses it
    std::optional<Readings> readings;

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
