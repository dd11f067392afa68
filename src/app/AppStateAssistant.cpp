#include "app/AppStateTick.h"
#include "assistant/ThermalAlertRuleEngine.h"
#include "context/PowerContext.h"
#include "persistence/ThermalHistory.h"
#include "support/Enumeration.h"

#include <algorithm>
#include <utility>

namespace cindertop {

namespace {

constexpr std::string_view offenderRead = "processes";
constexpr std::string_view historyRead = "history";

constexpr Seconds historySamplingInterval{5};
constexpr int confirmationCount = 2;
constexpr int secondaryInsightCount = 2;
constexpr Seconds eventCooldown{15 * 60};
constexpr Seconds globalCooldown{5 * 60};
constexpr Seconds minimumRecoveryPressureDuration{2 * 60};

/// Every offender is listed; views choose what they show.
ProcessOffenderConfiguration offenderConfiguration(const ProcessInformation& process,
                                                   std::optional<std::string> pinnedOffenderID) {
    return ProcessOffenderConfiguration({.processorCount = std::max(process.activeProcessorCount(), 1),
                                         .excludedProcessIdentifier = process.processIdentifier(),
                                         .excludedBundleIdentifier = process.bundleIdentifier(),
                                         .minimumVisibleCPUPercent = 0,
                                         .preferredMinimumOffenderCount = 1,
                                         .maximumOffenderCount = ProcessOffenderConfiguration::noMaximum,
                                         .maximumChildCount = 12,
                                         .maximumHistoryCount = 48,
                                         .indexingCPUThresholdPercent = 1.0,
                                         .pinnedOffenderID = std::move(pinnedOffenderID)});
}

ThermalHistoryContextFlags contextFlags(const SystemContextSnapshot& context, bool isIndexingOrSetupLikely) {
    const auto& displays = context.displays;
    const auto& power = context.power;
    return {.hasExternalDisplay = displays.externalDisplayCount > 0,
            .isProbableClamshell = displays.isProbableClamshell(),
            .isExternalPowerConnected =
                power.source == PowerSourceKind::acPower || power.source == PowerSourceKind::upsPower,
            .isLowPowerModeEnabled = power.isLowPowerModeEnabled,
            .isSustainedPressure = context.sustainedPressure.isSustained,
            .isIndexingOrSetupLikely = isIndexingOrSetupLikely};
}

} // namespace

struct AppState::HistoryRecord {
    ThermalHistorySample sample;
    ThermalMonitoringSnapshot snapshot;
};

AppState::Census AppState::takeCensus(Instant now, AwakeTime awake,
                                      std::optional<std::string> pinnedOffenderID) {
    auto offenders = engines_.offenders.snapshot(
        offenderConfiguration(environment_.machine.process, std::move(pinnedOffenderID)), now, awake);
    return {.offenders = std::move(offenders), .sources = environment_.machine.sources()};
}

void AppState::publishCensus(Census census, AwakeTime awake, ThermalLevel level) {
    latestSources_ = std::move(census.sources);
    if (!published_.settings->showProcessOffenders) { // switched off while the census was under way
        return;
    }
    nextProcessOffenderSampleDate_.scheduleAfter(awake,
                                                 offenderSamplingInterval(census.offenders.state, level));
    published_.processOffenderSnapshot.set(std::move(census.offenders));
}

void AppState::refreshProcessOffenders(const TickPointer& tick) {
    if (!published_.settings->showProcessOffenders) {
        published_.processOffenderSnapshot.set(ProcessOffenderSnapshot::empty());
    } else if (tick->readings->census) {
        publishCensus(std::move(*tick->readings->census), tick->awake, tick->score().level);
    } else if (tick->takesCensus) {
        reportFailedRead(offenderRead);
    }
    if (!isCurrent(*tick)) {
        return;
    }
    refreshRecommendations(tick->score(), tick->context(), tick->now);
    recordThermalHistoryIfNeeded(tick);
}

void AppState::sampleProcessOffenders(std::optional<std::string> pinnedOffenderID,
                                      std::function<void()> completion) {
    if (!published_.settings->showProcessOffenders) {
        completion();
        return;
    }
    const auto now = environment_.machine.clock.now();
    const auto awake = sleepWatch_.awakeAt(environment_.machine.clock.uptime());
    evaluate(
        environment_.executor,
        [this, now, awake, pinnedOffenderID = std::move(pinnedOffenderID)] {
            return takeCensus(now, awake, pinnedOffenderID);
        },
        [this, awake, stops = stops_, completion = std::move(completion)](std::optional<Census> census) {
            if (stops != stops_) {
                completion();
                return;
            }
            if (census) {
                publishCensus(std::move(*census), awake, published_.thermalSnapshot->level);
            } else {
                reportFailedRead(offenderRead);
            }
            completion();
        });
}

void AppState::refreshProcessOffendersNow() {
    if (isMonitoringPermitted() && !*published_.isPaused && published_.settings->showProcessOffenders) {
        environment_.executor.post([this, stops = stops_] {
            if (stops == stops_) {
                sampleProcessOffenders(std::nullopt, [] {});
            }
        });
    }
}

void AppState::refreshRecommendations(const ThermalScore& score, const SystemContextSnapshot& context,
                                      Instant now) {
    const RecommendationEngineConfiguration configuration{confirmationCount, secondaryInsightCount,
                                                          published_.settings->showProcessOffenders,
                                                          published_.settings->showContextInsights};
    published_.recommendationSnapshot.set(recommendationEngine_.update(
        score, context, *published_.processOffenderSnapshot, configuration, now));
}

void AppState::refreshRecommendationsFromLatest(Instant now) {
    if (latestThermalScore_ && latestSystemContextSnapshot_) {
        refreshRecommendations(*latestThermalScore_, *latestSystemContextSnapshot_, now);
    } else {
        published_.recommendationSnapshot.set(CinderRecommendationSnapshot::empty());
    }
}

bool AppState::isHistorySampleDue(const Tick& tick) const {
    return nextThermalHistorySampleDate_.isDue(tick.awake) ||
           lastRecordedHistoryLevel_ != tick.score().level ||
           lastRecordedSustainedPressure_ != tick.context().sustainedPressure.isSustained;
}

ThermalHistorySample AppState::historySample(const Tick& tick) const {
    const auto* const offender = topOffender();
    const auto label = offender ? std::optional(offender->displayName) : std::nullopt;
    const auto identifier = offender ? offender->bundleIdentifier : std::nullopt;
    const auto flags =
        contextFlags(tick.context(), published_.processOffenderSnapshot->isIndexingOrSetupLikely);
    const auto& score = tick.score();
    return {tick.now,
            score.level,
            score.score,
            tick.readings->cpuPercent,
            score.temperatureCelsius,
            label.and_then(sanitizedLabel),
            identifier.and_then(sanitizedBundleIdentifier),
            flags};
}

void AppState::recordThermalHistoryIfNeeded(const TickPointer& tick) {
    if (!published_.settings->historyEnabled) {
        latestCPUPercent_.reset();
        evaluateThermalAlerts(tick);
        return;
    }
    latestCPUPercent_ = tick->readings->cpuPercent;
    if (!isHistorySampleDue(*tick)) {
        evaluateThermalAlerts(tick);
        return;
    }
    const auto record = [this, sample = historySample(*tick), awake = tick->awake, stop = tick->stop] {
        return stop.stop_requested()
                   ? std::nullopt
                   : std::optional(HistoryRecord{.sample = sample,
                                                 .snapshot = thermalHistoryStore_.record(sample, awake)});
    };
    awaitIn(tick, record, [this, tick](std::optional<std::optional<HistoryRecord>> recorded) {
        if (!recorded) {
            reportFailedRead(historyRead);
        } else if (*recorded && published_.settings->historyEnabled) {
            publishHistory(*tick, std::move(**recorded));
        }
        evaluateThermalAlerts(tick);
    });
}

void AppState::publishHistory(const Tick& tick, HistoryRecord record) {
    nextThermalHistorySampleDate_.scheduleAfter(tick.awake, historySamplingInterval);
    lastRecordedHistoryLevel_ = record.sample.level;
    lastRecordedSustainedPressure_ = record.sample.contextFlags.isSustainedPressure;
    if (historyObserver_) {
        historyObserver_(record.sample, record.snapshot);
    }
    published_.monitoringSnapshot.set(std::move(record.snapshot));
}

void AppState::evaluateThermalAlerts(const TickPointer& tick) {
    if (!isCurrent(*tick)) {
        return;
    }
    if (isFromBeforeSleep(*tick)) { // outdated
        completeTick(*tick);
        return;
    }
    const bool onlyCritical =
        published_.settings->notificationMinimumLevel == NotificationMinimumLevel::critical;
    const auto untold = thermalAlertRuleEngine_;
    const auto alert =
        thermalAlertRuleEngine_.evaluate({.score = tick->score(),
                                          .systemContext = tick->context(),
                                          .recommendationSnapshot = *published_.recommendationSnapshot,
                                          .topOffenderLabel = topOffenderLabel(),
                                          .now = tick->now},
                                         {published_.settings->notificationsEnabled,
                                          onlyCritical ? ThermalLevel::critical : ThermalLevel::serious,
                                          eventCooldown, globalCooldown, minimumRecoveryPressureDuration});
    if (!alert) {
        completeTick(*tick);
        return;
    }
    const auto request = notificationStateRequests_;
    systemNotificationService_.deliver(
        *alert, published_.settings->notificationsEnabled,
        [this, tick, request, untold, kind = alert->kind](SystemNotificationState state) {
            if (!isCurrent(*tick)) {
                return;
            }
            if (tick->isAlertWithheld) {
                thermalAlertRuleEngine_ = untold; // the next tick tells what is still true
            } else {
                finishDelivery(kind, state, request);
            }
            completeTick(*tick);
        },
        [this, tick] {
            tick->isAlertWithheld = isFromBeforeSleep(*tick);
            return isCurrent(*tick) && !tick->isAlertWithheld;
        });
}

void AppState::finishDelivery(ThermalAlertKind kind, SystemNotificationState state, std::uint64_t request) {
    if (request == notificationStateRequests_) { // else the preference has changed meanwhile
        published_.systemNotificationState.set(state);
    }
    if (state == SystemNotificationState::authorized) {
        log(DiagnosticLogLevel::info, DiagnosticLogCategory::thermal, "Thermal notification delivered",
            {{"kind", std::string(rawValue(kind))}});
    }
}

const ProcessOffender* AppState::topOffender() const {
    const auto& snapshot = *published_.processOffenderSnapshot;
    const bool isKnown =
        published_.settings->showProcessOffenders && snapshot.state == ProcessOffenderSnapshotState::ready;
    return isKnown && !snapshot.offenders.empty() ? &snapshot.offenders.front() : nullptr;
}

std::optional<std::string> AppState::topOffenderLabel() const {
    const auto* const offender = topOffender();
    return offender ? std::optional(offender->displayName) : std::nullopt;
}

void AppState::loadHistoryIfEnabled() {
    if (!published_.settings->historyEnabled) {
        clearHistory();
        return;
    }
    environment_.executor.post([this] {
        const auto now = environment_.machine.clock.now();
        evaluate(
            environment_.executor, [this, now] { return thermalHistoryStore_.snapshot(now); },
            [this](std::optional<ThermalMonitoringSnapshot> snapshot) {
                if (snapshot && published_.settings->historyEnabled) {
                    published_.monitoringSnapshot.set(std::move(*snapshot));
                }
            });
    });
}

void AppState::saveHistory(std::function<void(FileResult<void>)> completion) {
    evaluate(
        environment_.executor, [this] { return thermalHistoryStore_.save(); },
        [completion = std::move(completion)](std::optional<FileResult<void>> saved) {
            completion(saved.value_or(std::unexpected(std::errc::not_enough_memory)));
        });
}

void AppState::clearHistory() {
    published_.monitoringSnapshot.set(ThermalMonitoringSnapshot::empty());
    nextThermalHistorySampleDate_ = {};
    lastRecordedHistoryLevel_.reset();
    lastRecordedSustainedPressure_.reset();
    environment_.executor.post(
        [this] { environment_.executor.submit([this] { thermalHistoryStore_.clear(); }, [] {}); });
}

} // namespace cindertop
