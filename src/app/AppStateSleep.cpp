#include "app/AppStateTick.h"

#include <chrono>
#include <utility>

namespace cindertop {

/// Its readings date from before a sleep.
bool AppState::isFromBeforeSleep(const Tick& tick) const {
    return SleepWatch::hasSleptSince(tick.uptime, environment_.machine.clock.uptime());
}

/// What was measured before a sleep says nothing about the time after it. What the user was told stays told.
void AppState::startOver() {
    nextProcessOffenderSampleDate_ = {};
    nextThermalHistorySampleDate_ = {};
    recommendationEngine_.reset();
    thermalAlertRuleEngine_.noteSleep();
    log(DiagnosticLogLevel::info, DiagnosticLogCategory::thermal, "Monitoring continues after sleep");
}

/// The machine waits for `isReady`: all that was recorded until now is written by then.
void AppState::prepareForSleep(std::function<void()> isReady) {
    sleepWatch_.noteComingSleep();
    saveHistory([isReady = std::move(isReady)](const FileResult<void>& /*saved*/) { isReady(); });
}

void AppState::continueAfterSleep() {
    sleepWatch_.noteWake();
    if (thermalMonitoringTask_ && thermalMonitoringTask_->sleep) { // else a tick is under way
        sleepBeforeTick(std::chrono::nanoseconds{0});
    }
}

} // namespace cindertop
