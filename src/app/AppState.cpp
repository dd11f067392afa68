#include "app/AppState.h"

#include "app/AppStateTick.h"
#include "app/LegalTerms.h"

#include <utility>

namespace cindertop {

namespace {

constexpr Seconds historyDuration{60 * 60};
constexpr Seconds maximumAttributionGap{5 * 60};

} // namespace

AppState::AppState(AppStateEnvironment environment)
    : environment_(std::move(environment)),
      temperatures_(environment_.temperatures),
      settingsStore_(environment_.defaults, defaultSettings(environment_.machine.operatingSystem)),
      engines_(environment_.machine, environment_.pressureReader),
      thermalHistoryStore_(environment_.historyFile, historyDuration, maximumAttributionGap,
                           environment_.calendar, environment_.files, environment_.historyWriting),
      systemNotificationService_(environment_.notificationCenter),
      recommendationEngine_(environment_.machine.operatingSystem),
      thermalAlertRuleEngine_(environment_.machine.operatingSystem),
      diagnosticLogService_(environment_.diagnosticFile, {.defaults = environment_.defaults,
                                                          .files = environment_.files,
                                                          .unifiedLog = environment_.unifiedLog,
                                                          .clock = environment_.machine.clock,
                                                          .calendar = environment_.calendar,
                                                          .writingClock = environment_.historyWriting.clock}),
      ownProcessIdentifier_(environment_.machine.process.processIdentifier()) {
    diagnosticLogService_.observe(environment_.diagnosticObserver);
    start();
    if (environment_.sleep != nullptr) {
        environment_.sleep->observe(
            {.willSleep = [this](auto isReady) { prepareForSleep(std::move(isReady)); },
             .hasWoken = [this] { continueAfterSleep(); }});
    }
}

void AppState::start() {
    published_.hardwareProfile.set(readHardwareProfile(environment_.systemValues, environment_.architecture));
    published_.legalTermsAccepted.set(areTermsAccepted(environment_.defaults));
    applySettings(settingsStore_.load());
    log(DiagnosticLogLevel::info, DiagnosticLogCategory::app, "App state initialized");
    refreshLaunchAtLoginStatus();
    updateActivationPolicy();
    updateMonitoringState();
    loadHistoryIfEnabled();
}

AppState::~AppState() {
    finish();
}

void AppState::finish() {
    if (std::exchange(isFinished_, true)) {
        return;
    }
    if (environment_.sleep != nullptr) {
        environment_.sleep->observe({});
    }
    environment_.executor.stop();
    // What cannot be written now has nowhere else to go.
    diagnosticLogService_.save();
    if (!published_.settings
             ->historyEnabled) { // it may have been switched off just now, and the clearing been dropped
        thermalHistoryStore_.clear();
        return;
    }
    [[maybe_unused]] const auto saved = attempt([this] { return thermalHistoryStore_.save(); });
}

void AppState::log(DiagnosticLogLevel level, DiagnosticLogCategory category, std::string_view message,
                   const DiagnosticMetadata& metadata) {
    diagnosticLogService_.log(level, category, message, metadata);
}

} // namespace cindertop
