#include "ui/PopoverContents.h"

#include "ui/ApplicationIcon.h"
#include "ui/Theme.h"

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
    contents.level = static_cast<int>(Status::paused);
    contents.statusText = "Not Monitoring";
    contents.symbolName = symbolName(Status::paused);
    contents.tipMessage = "Before you accept the terms of use, nothing is watched and nothing is kept.";
}

void addToggle(PopoverContents& contents, bool isPaused) {
    const bool starts = contents.isWaitingForTerms || isPaused;
    contents.toggleSymbolName = starts ? "play.fill" : "pause.fill";
    contents.toggleTitle = contents.isWaitingForTerms ? "Set Up Cindertop..."
                           : isPaused                 ? "Enable Monitoring"
                                                      : "Disable Monitoring";
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
        addStatus(contents, state.makePresentation(*published.thermalSnapshot));
        addScore(contents, *published.thermalSnapshot);
    } else {
        addWaiting(contents);
    }
    addToggle(contents, *published.isPaused);
    if (*published.showProcessOffenders) {
        addTopOffender(contents, *published.processOffenderSnapshot);
    }
    contents.savesPower = published.systemContextSnapshot->power.isLowPowerModeEnabled;
    return contents;
}

} // namespace cindertop::ui
