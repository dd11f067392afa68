#include "ui/presentation/PopoverContents.h"

#include "ui/presentation/MenuTexts.h"
#include "ui/theme/ApplicationIcon.h"
#include "ui/theme/Theme.h"

#include <cmath>

namespace cindertop::ui {

namespace {

using Status = ThermalAssistantPresentation::Status;

QString textOf(const std::optional<std::string>& text) {
    return text ? QString::fromStdString(*text) : QString();
}

void addStatus(PopoverContents& contents, const ThermalAssistantPresentation& presentation) {
    contents.level = static_cast<int>(presentation.status);
    contents.statusText = label(presentation.status);
    contents.symbolName = symbolName(presentation.status);
    contents.temperatureText = textOf(presentation.popoverTemperatureText);
    contents.trendLabel = textOf(presentation.trendLabel);
    contents.tipMessage = textOf(presentation.actionMessage);
}

/// Without any fact the score of 0 is no measurement.
void addScore(PopoverContents& contents, const ThermalSnapshot& snapshot) {
    const bool isKnown = snapshot.systemState != SystemThermalState::unavailable ||
                         snapshot.pressureLevel != ThermalPressureLevel::unavailable ||
                         snapshot.temperatureCelsius;
    if (isKnown) {
        contents.scoreText = QString("Score %1").arg(snapshot.score);
    }
}

/// An idle machine would read "Normal", which nobody has measured.
void addWaiting(PopoverContents& contents) {
    contents.isWaitingForTerms = true;
    contents.level = static_cast<int>(Status::notMonitoring);
    contents.statusText = label(Status::notMonitoring);
    contents.symbolName = symbolName(Status::notMonitoring);
    contents.tipMessage =
        "Before you accept the terms of use, nothing is watched in the background and nothing is kept.";
}

void addSecondaryInsights(PopoverContents& contents, const CinderRecommendationSnapshot& advice) {
    for (const auto& insight : advice.secondaryInsights) {
        contents.secondaryInsightTitles += QString::fromStdString(insight.title);
        contents.secondaryInsightMessages += QString::fromStdString(insight.message);
    }
}

void addToggle(PopoverContents& contents, bool isPaused, OperatingSystem system) {
    const bool starts = contents.isWaitingForTerms || isPaused;
    contents.toggleSymbolName = starts ? "play.fill" : "pause.fill";
    contents.toggleTitle =
        contents.isWaitingForTerms ? "Set Up Cindertop..." : monitoringToggleTitle(system, isPaused);
}

void addTopOffender(PopoverContents& contents, const ProcessOffenderSnapshot& snapshot) {
    if (snapshot.offenders.empty()) {
        return;
    }
    const auto& offender = snapshot.offenders.front();
    contents.offenderName = QString::fromStdString(offender.displayName);
    contents.offenderPercentText = QString::number(std::round(offender.cpuPercent), 'f', 0) + '%';
    contents.offenderIconSource = applicationIconSource(offender);
}

} // namespace

PopoverContents PopoverContents::of(const AppState& state) {
    const auto& published = state.published();
    PopoverContents contents;
    if (state.isMonitoringPermitted()) {
        addStatus(contents, state.currentPresentation());
        addScore(contents, *published.thermalSnapshot);
        if (published.settings->recommendationVerbosity == RecommendationVerbosity::detailed &&
            !*published.isPaused) {
            addSecondaryInsights(contents, state.currentRecommendation());
        }
    } else {
        addWaiting(contents);
    }
    addToggle(contents, *published.isPaused, state.environment().machine.operatingSystem);
    if (published.settings->showProcessOffenders) {
        addTopOffender(contents, *published.processOffenderSnapshot);
    }
    contents.savesPower = published.systemContextSnapshot->power.isLowPowerModeEnabled;
    return contents;
}

} // namespace cindertop::ui
