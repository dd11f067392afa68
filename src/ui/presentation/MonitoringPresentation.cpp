#include "ui/presentation/MonitoringPresentation.h"

#include "support/Wording.h"
#include "ui/presentation/ContextTexts.h"
#include "ui/presentation/ThermalHistoryPlot.h"
#include "ui/theme/ApplicationIcon.h"
#include "ui/theme/Theme.h"

#include <QLocale>
#include <algorithm>
#include <cmath>
#include <utility>

namespace cindertop::ui {

namespace {

constexpr std::chrono::seconds updateInterval{10}; ///< about a point of the chart's width

/// Not before `instant`, so that the newest sample is never in the future.
QDateTime dateTime(Instant instant) {
    return QDateTime::fromMSecsSinceEpoch(
        std::chrono::ceil<std::chrono::milliseconds>(instant.time_since_epoch()).count());
}

QString labelOf(ThermalLevel level) {
    return label(allLevels.at(static_cast<std::size_t>(level)));
}

QString percentText(double percent) {
    return QString::number(std::round(percent), 'f', 0) + '%';
}

constexpr Wording oneEpisode{"{name} episodes", "{name} episode"};

QString episodesText(std::int64_t count, OperatingSystem system) {
    const auto wording = count == 1 ? oneEpisode : Wording::same("{name} episodes");
    return QString::fromStdString(withName(wording.in(system), std::to_string(count)));
}

const QString noHeat = "No heat readings";

QString sentence(const QString& start, const ThermalHistorySample& sample) {
    return start + ' ' + QString::number(sample.score) + ", " + labelOf(sample.level);
}

} // namespace

MonitoringPresentation::MonitoringPresentation(AppState& state)
    : state_(state),
      observations_{
          state.published().monitoringSnapshot.bindable().addNotifier([this] { update(); }),
          state.published().settings.bindable().addNotifier([this] { update(); }),
      } {
    update();
}

const ThermalMonitoringSnapshot& MonitoringPresentation::snapshot() const {
    return *state_.published().monitoringSnapshot;
}

void MonitoringPresentation::update() {
    now_ = std::max(state_.environment().machine.clock.now(), snapshot().measuredAt);
    hasChart_ = charted().size() >= 2;
    Q_EMIT changed();
    updateReadout();
    scheduleUpdate();
}

void MonitoringPresentation::scheduleUpdate() {
    nextUpdate_.reset();
    if (isShown_) {
        nextUpdate_ = state_.environment().timers.start(updateInterval, [this] { update(); });
    }
}

void MonitoringPresentation::setShown(bool isShown) {
    if (std::exchange(isShown_, isShown) != isShown) {
        update();
        Q_EMIT shownChanged();
    }
}

/// What the chart shows, oldest first: the snapshot's samples may reach further back.
std::vector<const ThermalHistorySample*> MonitoringPresentation::charted() const {
    std::vector<const ThermalHistorySample*> samples;
    for (const auto& run : runs()) {
        std::ranges::transform(run, std::back_inserter(samples), &ThermalHistoryPoint::sample);
    }
    return samples;
}

std::vector<ThermalHistoryRun> MonitoringPresentation::runs() const {
    return thermalHistoryRuns(snapshot().samples, now_, std::chrono::minutes(shownMinutes()));
}

int MonitoringPresentation::shownMinutes() const {
    return static_cast<int>(shownHistory(state_.published().settings->historyDurationMinutes).count());
}

QString MonitoringPresentation::title() const {
    return QString("Last %1 Minutes").arg(shownMinutes());
}

QString MonitoringPresentation::shortTitle() const {
    return shownMinutes() == 60 ? QString("Last Hour") : QString("Last %1 Min").arg(shownMinutes());
}

bool MonitoringPresentation::hasHeat() const {
    return std::ranges::any_of(charted(), [](const auto* sample) { return isHeatKnown(*sample); });
}

ThermalHistorySamples MonitoringPresentation::samples() const {
    return {.values = snapshot().samples};
}

QDateTime MonitoringPresentation::now() const {
    return dateTime(now_);
}

bool MonitoringPresentation::hasTemperatures() const {
    return std::ranges::any_of(charted(),
                               [](const auto* sample) { return sample->temperatureCelsius.has_value(); });
}

QString MonitoringPresentation::highestTemperatureText() const {
    return QString::fromStdString(*state_.temperatureText(highestCharted));
}

QString MonitoringPresentation::lowestTemperatureText() const {
    return QString::fromStdString(*state_.temperatureText(lowestCharted));
}

QString MonitoringPresentation::historySummary() const {
    const auto samples = charted();
    if (samples.size() < 2) { // there is no chart
        return {};
    }
    if (!hasHeat()) {
        return noHeat;
    }
    const auto& highest =
        **std::ranges::max_element(samples, {}, [](const auto* sample) { return sample->score; });
    const auto age = formattedDuration(secondsBetween(highest.measuredAt, now_).count());
    return sentence("Score", *samples.back()) + ". " + sentence("Highest", highest) + ", " + age + " ago.";
}

void MonitoringPresentation::inspect(double position) {
    inspectedPosition_ = position;
    updateReadout();
}

void MonitoringPresentation::moveInspection(int minutes) {
    const double from = readout_.isPresent ? readout_.position : 1;
    const double step = minutes * (std::chrono::duration<double>(std::chrono::minutes(1)) /
                                   std::chrono::duration<double>(std::chrono::minutes(shownMinutes())));
    inspect(std::clamp(from + (readout_.isPresent ? step : 0), 0.0, 1.0));
}

void MonitoringPresentation::updateReadout() {
    auto readout = readoutAt(inspectedPosition_);
    if (readout_ != readout) {
        readout_ = std::move(readout);
        Q_EMIT inspectedChanged();
    }
}

ThermalHistoryReadout MonitoringPresentation::readoutAt(double position) const {
    if (position < 0 || !hasChart_) {
        return {};
    }
    const auto charted = runs();
    const auto point = nearestPoint(charted, position);
    return point ? readoutOf(*point->sample, point->position) : ThermalHistoryReadout{};
}

ThermalHistoryReadout MonitoringPresentation::readoutOf(const ThermalHistorySample& sample,
                                                        double position) const {
    const auto temperature = state_.temperatureText(sample.temperatureCelsius);
    const auto time = dateTime(sample.measuredAt).time();
    return {.isPresent = true,
            .position = position,
            .height = static_cast<double>(sample.score) / 100,
            .level = isHeatKnown(sample) ? static_cast<int>(sample.level) : -1,
            .time = QLocale::system().toString(time, QLocale::ShortFormat),
            .score = isHeatKnown(sample) ? QString::number(sample.score) : QString(),
            .levelLabel = isHeatKnown(sample) ? labelOf(sample.level) : noHeat,
            .cpu = sample.globalCPUPercent ? percentText(*sample.globalCPUPercent) : QString(),
            .temperature = temperature ? QString::fromStdString(*temperature) : QString()};
}

QString MonitoringPresentation::trackedText() const {
    return formattedDuration(totalDuration());
}

QString MonitoringPresentation::seriousText() const {
    return episodesText(snapshot().todaySummary.throttlingEpisodeCount,
                        state_.environment().machine.operatingSystem);
}

QString MonitoringPresentation::criticalText() const {
    return episodesText(snapshot().todaySummary.criticalEpisodeCount,
                        state_.environment().machine.operatingSystem);
}

QString MonitoringPresentation::frequentLoadText() const {
    const auto label = snapshot().todaySummary.leadingOffenderLabel(state_.environment().machine.comparison);
    return label ? QString::fromStdString(*label) : QString("No clear offender yet");
}

QString MonitoringPresentation::frequentLoadIconSource() const {
    const auto identifier =
        snapshot().todaySummary.leadingOffenderBundleIdentifier(state_.environment().machine.comparison);
    return identifier ? applicationIconSource(QString::fromStdString(*identifier), frequentLoadText())
                      : QString();
}

bool MonitoringPresentation::hasLevels() const {
    return areLevelsMeasured(snapshot());
}

QStringList MonitoringPresentation::levelLabels() {
    QStringList labels;
    for (const auto level : allLevels) {
        labels += label(level);
    }
    return labels;
}

QList<double> MonitoringPresentation::levelDurations() const {
    const auto& durations = snapshot().todaySummary.levelDurations;
    return {durations.normal, durations.fair, durations.serious, durations.critical};
}

double MonitoringPresentation::totalDuration() const {
    return snapshot().todaySummary.levelDurations.totalDuration();
}

QString MonitoringPresentation::durationText(double seconds) {
    return formattedDuration(seconds);
}

} // namespace cindertop::ui
