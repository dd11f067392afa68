#include "ui/presentation/HeatPresentation.h"

#include "context/HardwareText.h"
#include "thermal/ScoreReason.h"
#include "ui/presentation/QtText.h"

#include <algorithm>
#include <utility>

namespace cindertop::ui {

namespace {

enum FactRole { titleRole = Qt::UserRole, textRole, symbolNameRole };

enum SensorRole { labelRole = Qt::UserRole, temperatureTextRole, rangeTextRole, heightsRole };

/// Less than this is drawn flat: a line must not make much of nothing.
constexpr double smallestSpan = 10;

QString trendWord(ThermalTrend trend) {
    switch (trend) {
    case ThermalTrend::rising:
        return "Rising";
    case ThermalTrend::cooling:
        return "Cooling";
    case ThermalTrend::stable:
        break;
    }
    return "Stable";
}

QString absenceText(ThermalAssistantPresentation::Status status) {
    using enum ThermalAssistantPresentation::Status;
    switch (status) {
    case paused:
        return "Paused";
    case notMonitoring:
        return "Not monitoring";
    case measuring:
        return "Measuring";
    default:
        return "No heat readings";
    }
}

QString countText(std::size_t sensors) {
    return sensors == 0   ? QString()
           : sensors == 1 ? QString("1 sensor")
                          : QString::number(sensors) + " sensors";
}

QList<double> heightsOf(const SensorCourses::Steps& steps) {
    double lowest = 0;
    double highest = 0;
    bool isFirst = true;
    for (const auto& each : steps) {
        if (each) {
            lowest = isFirst ? *each : std::min(lowest, *each);
            highest = isFirst ? *each : std::max(highest, *each);
            isFirst = false;
        }
    }
    const double span = std::max(highest - lowest, smallestSpan);
    const double middle = (lowest + highest) / 2;
    QList<double> heights;
    heights.reserve(static_cast<qsizetype>(steps.size()));
    for (const auto& each : steps) {
        heights.push_back(each ? std::clamp(0.5 + (*each - middle) / span, 0.0, 1.0) : -1.0);
    }
    return heights;
}

} // namespace

QVariant HeatFactRow::value(int role) const {
    switch (role) {
    case titleRole:
        return title;
    case textRole:
        return text;
    case symbolNameRole:
        return symbolName;
    default:
        return {};
    }
}

QHash<int, QByteArray> HeatFactRow::roleNames() {
    return {{titleRole, "title"}, {textRole, "text"}, {symbolNameRole, "symbolName"}};
}

QVariant SensorRow::value(int role) const {
    switch (role) {
    case labelRole:
        return label;
    case temperatureTextRole:
        return temperatureText;
    case rangeTextRole:
        return rangeText;
    case heightsRole:
        return QVariant::fromValue(heights);
    default:
        return {};
    }
}

QHash<int, QByteArray> SensorRow::roleNames() {
    return {{labelRole, "label"},
            {temperatureTextRole, "temperatureText"},
            {rangeTextRole, "rangeText"},
            {heightsRole, "heights"}};
}

/// The context changes with every tick, at the latest by its instant.
HeatPresentation::HeatPresentation(AppState& state)
    : state_(state),
      observations_{
          state.published().systemContextSnapshot.bindable().addNotifier([this] { update(); }),
          state.published().isPaused.bindable().addNotifier([this] { update(); }),
          state.published().legalTermsAccepted.bindable().addNotifier([this] { update(); }),
          state.published().settings.bindable().addNotifier([this] { update(); }),
      } {}

void HeatPresentation::setShown(bool isShown) {
    if (std::exchange(isShown_, isShown) != isShown) {
        update();
        Q_EMIT shownChanged();
    }
}

void HeatPresentation::showSensors(bool areShown) {
    if (std::exchange(areSensorsShown_, areShown) != areShown) {
        update();
        Q_EMIT shownChanged();
    }
}

void HeatPresentation::update() {
    if (!isShown_) {
        return;
    }
    if (areSensorsShown_) {
        state_.noteLook();
    }
    const auto temperatures = state_.temperatures();
    facts_.update(factRows(temperatures));
    sensors_.update(areSensorsShown_ ? sensorRows(temperatures) : std::vector<SensorRow>());
    auto contents = this->contents(temperatures);
    if (contents_ != contents) {
        contents_ = std::move(contents);
        Q_EMIT changed();
    }
}

HeatPresentation::Contents
HeatPresentation::contents(const std::vector<TemperatureReading>& temperatures) const {
    const auto& score = state_.latestThermalScore();
    Contents contents;
    contents.sensorCountText = countText(temperatures.size());
    if (!score || !isHeatKnown(*score) || *state_.published().isPaused) {
        contents.levelText = absenceText(state_.currentPresentation().status);
        return contents;
    }
    contents.level = static_cast<int>(score->level);
    contents.levelText = qtText(label(score->level));
    contents.scoreText = QString::number(score->score) + " of 100";
    contents.share = score->score / 100.0;
    contents.trendText = trendWord(score->trend);
    contents.reasonText = qtText(scoreReason(*score, state_.temperatureFormatter()).value_or(""));
    return contents;
}

std::vector<HeatFactRow>
HeatPresentation::factRows(const std::vector<TemperatureReading>& temperatures) const {
    const auto& score = state_.latestThermalScore();
    if (!score) {
        return {};
    }
    std::vector<HeatFactRow> rows;
    const auto add = [&rows](const QString& title, const QString& text, const char* symbolName) {
        rows.push_back({.title = title, .text = text, .symbolName = symbolName});
    };
    const auto& context = *state_.published().systemContextSnapshot;
    if (const auto* const hottest = hottestSensor(*score, temperatures)) {
        add(qtText(hottest->label), qtText(temperatureWithLimits(*hottest, state_.temperatureFormatter())),
            "thermometer.medium");
    }
    if (const auto heldBack = heldBackText(context.hardware.processor)) {
        add("Held back", qtText(*heldBack), "speedometer");
    }
    if (const auto flow = powerFlowText(context)) {
        add("Power", qtText(*flow), "powerplug");
    }
    for (const auto& chip : context.hardware.meters.chips) {
        add(qtText(chip.name), qtText(wattsText(chip.watts)), "powerplug");
    }
    for (const auto& fan : context.hardware.meters.fans) {
        add(qtText(fan.name), qtText(fanSpeedText(fan)), "arrow.triangle.2.circlepath");
    }
    return rows;
}

std::vector<SensorRow>
HeatPresentation::sensorRows(const std::vector<TemperatureReading>& temperatures) const {
    std::vector<SensorRow> rows;
    rows.reserve(temperatures.size());
    for (std::size_t place = 0; place < temperatures.size(); ++place) {
        const auto& reading = temperatures[place];
        const auto& range = reading.range;
        const auto lowest = state_.temperatureText(range ? std::optional(range->lowest) : std::nullopt);
        const auto highest = state_.temperatureText(range ? std::optional(range->highest) : std::nullopt);
        const auto same = std::ranges::count(temperatures.begin(),
                                             temperatures.begin() + static_cast<std::ptrdiff_t>(place),
                                             reading.id, &TemperatureReading::id);
        rows.push_back(
            {.id = qtText(reading.id) + '#' + QString::number(same),
             .label = qtText(reading.label),
             .temperatureText = qtText(state_.temperatureText(reading.celsius).value_or("")),
             .rangeText = lowest && highest ? qtText(*lowest) + " to " + qtText(*highest) : QString(),
             .heights = heightsOf(state_.temperatureSteps(place))});
    }
    return rows;
}

} // namespace cindertop::ui
