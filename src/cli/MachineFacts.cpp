#include "cli/MachineFacts.h"

#include "cli/MachineText.h"
#include "context/HardwareText.h"
#include "terminal/ValueText.h"
#include "thermal/ScoreReason.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <iterator>
#include <optional>
#include <ranges>
#include <string>
#include <utility>

namespace cindertop::cli {

namespace {

constexpr int gapBetweenCells = 3;

struct SensorCell {
    std::string name;
    std::string temperature;
};

/// Processor and graphics before what never decides the score, however hot.
std::vector<TemperatureReading> byKind(const std::vector<TemperatureReading>& readings) {
    using enum ThermalSensorKind;
    std::vector<TemperatureReading> sorted;
    for (const auto kind : {cpu, gpu, other, power, storage, battery}) {
        std::ranges::copy(readings | std::views::filter([&](const auto& each) { return each.kind == kind; }),
                          std::back_inserter(sorted));
    }
    return sorted;
}

std::vector<TemperatureReading> representativeFirst(const MachineSnapshot& snapshot) {
    auto readings = byKind(snapshot.temperatures);
    const auto representative =
        std::ranges::find(readings, snapshot.score.temperatureCelsius, &TemperatureReading::celsius);
    if (representative != readings.end()) {
        std::rotate(readings.begin(), representative, std::next(representative));
    }
    return readings;
}

/// When a sensor that is not read each time was read.
std::string ageText(const TemperatureReading& reading) {
    const auto seconds = std::chrono::round<std::chrono::seconds>(reading.age).count();
    return seconds > 0 ? ", " + std::to_string(seconds) + " s ago" : std::string();
}

/// "97°C", and where its lowest and highest are known "97°C (41°C to 99°C)".
std::string sensorText(const TemperatureReading& reading, const TemperatureFormatter& temperatures) {
    const auto text = temperatures.text(reading.celsius);
    return reading.range ? text + " (" + temperatures.text(reading.range->lowest) + " to " +
                               temperatures.text(reading.range->highest) + ")"
                         : text;
}

std::vector<SensorCell> sensorCells(const MachineSnapshot& snapshot, const PageStyle& style) {
    const int room = style.format.columns - labelColumns;
    std::vector<SensorCell> cells;
    for (const auto& reading : representativeFirst(snapshot)) {
        auto temperature = shown(sensorText(reading, style.temperatures), style.format.charset);
        const int nameRoom = std::max(room - columnsOf(temperature) - 1, 1);
        cells.push_back({.name = fitted(shown(reading.label, style.format.charset) + ageText(reading),
                                        nameRoom, style.format.charset),
                         .temperature = std::move(temperature)});
    }
    return cells;
}

int widest(const std::vector<SensorCell>& cells, std::string SensorCell::* part) {
    int columns = 0;
    for (const auto& cell : cells) {
        columns = std::max(columns, columnsOf(cell.*part));
    }
    return columns;
}

void addPart(std::string& text, std::string_view part) {
    text += text.empty() ? "" : ", ";
    text += part;
}

std::string wattsFact(const SystemContextSnapshot& context, Charset charset) {
    auto text = powerFlowText(context).value_or("");
    for (const auto& chip : context.hardware.meters.chips) {
        addPart(text, shown(chip.name, charset) + " " + wattsText(chip.watts));
    }
    return text;
}

std::string fansFact(const std::vector<FanReading>& fans, Charset charset) {
    std::string text;
    for (const auto& fan : fans) {
        addPart(text, shown(fan.name, charset) + " " + fanSpeedText(fan));
    }
    return text;
}

std::string missingTemperature(const MachineSnapshot& snapshot, Charset charset) {
    auto text = std::string(notAvailable) + ": ";
    if (!snapshot.temperatures.empty()) {
        return text + "no sensor of the processor answers";
    }
    const auto sensors = std::ranges::find(snapshot.sources, temperatureSensorsSource, &SourceStatus::name);
    const bool isExplained =
        sensors != snapshot.sources.end() && !sensors->isAvailable && !sensors->reason.empty();
    return text + (isExplained ? shown(sensors->reason, charset) : "no sensor answers");
}

/// Of the sensor that counts, with its limits where they are known.
std::string temperatureFact(const MachineSnapshot& snapshot, const std::string& temperature,
                            const PageStyle& style) {
    const auto* const hottest = hottestSensor(snapshot.score, snapshot.temperatures);
    const std::string_view separator = style.format.charset == Charset::ascii ? ", " : " · ";
    const auto text =
        hottest == nullptr ? temperature : temperatureWithLimits(*hottest, style.temperatures, separator);
    return shown(text, style.format.charset);
}

} // namespace

std::vector<Line> fact(std::string_view label, std::string_view text, const PageStyle& style) {
    std::vector<Line> lines;
    for (auto& part : wrapped(text, style.format.columns - labelColumns)) {
        const auto lead = lines.empty() ? label : std::string_view();
        lines.push_back({{paddedRight(lead, labelColumns), Tone::faint}, {std::move(part)}});
    }
    return lines;
}

std::vector<Line> thermalFacts(const MachineSnapshot& snapshot, const PageStyle& style) {
    const auto temperature = style.temperatures.text(snapshot.score.temperatureCelsius);
    auto lines = fact("Why",
                      scoreReason(snapshot.score, style.temperatures)
                          .transform([&](const auto& why) { return shown(why, style.format.charset); })
                          .value_or(""),
                      style);
    append(lines, fact("Thermal", thermalText(snapshot.score), style));
    append(lines, fact("Pressure", pressureText(snapshot.context.sustainedPressure), style));
    append(lines, fact("Temperature",
                       temperature ? temperatureFact(snapshot, *temperature, style)
                                   : missingTemperature(snapshot, style.format.charset),
                       style));
    return lines;
}

std::vector<Line> surroundingFacts(const MachineSnapshot& snapshot, const PageStyle& style) {
    const auto& context = snapshot.context;
    auto lines = fact(
        "Power", powerText(context.power, style.temperatures, style.format.charset, style.system), style);
    append(lines, fact("Displays", displaysText(context.displays), style));
    append(lines, fact("Processor", cpuText(snapshot), style));
    return lines;
}

std::vector<Line> hardwareFacts(const MachineSnapshot& snapshot, const PageStyle& style) {
    const auto& hardware = snapshot.context.hardware;
    auto lines = fact("Speed", heldBackText(hardware.processor).value_or(""), style);
    append(lines, fact("Watts", wattsFact(snapshot.context, style.format.charset), style));
    append(lines, fact("Fans", fansFact(hardware.meters.fans, style.format.charset), style));
    return lines;
}

std::vector<Line> sensorTable(const MachineSnapshot& snapshot, const PageStyle& style) {
    const auto cells = sensorCells(snapshot, style);
    const int nameColumns = widest(cells, &SensorCell::name);
    const int temperatureColumns = widest(cells, &SensorCell::temperature);
    const int cellColumns = nameColumns + 1 + temperatureColumns;
    const int room = style.format.columns - labelColumns + gapBetweenCells;
    const auto perLine = static_cast<std::size_t>(std::max(room / (cellColumns + gapBetweenCells), 1));
    std::vector<Line> lines;
    for (std::size_t index = 0; index < cells.size(); ++index) {
        if (index % perLine == 0) {
            lines.push_back({{std::string(labelColumns, ' ')}});
        } else {
            lines.back().emplace_back(std::string(gapBetweenCells, ' '));
        }
        lines.back().emplace_back(paddedRight(cells[index].name, nameColumns) + ' ', Tone::faint);
        lines.back().emplace_back(paddedLeft(cells[index].temperature, temperatureColumns));
    }
    return lines;
}

std::string cpuText(const MachineSnapshot& snapshot) {
    if (snapshot.cpuPercent) {
        return percentText(*snapshot.cpuPercent);
    }
    const bool isFirstTick = snapshot.offenders.state == ProcessOffenderSnapshotState::collecting;
    return std::string(isFirstTick ? "measuring" : notAvailable);
}

} // namespace cindertop::cli
