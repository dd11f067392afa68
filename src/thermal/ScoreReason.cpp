#include "thermal/ScoreReason.h"

#include <algorithm>
#include <utility>

namespace cindertop {

namespace {

std::string basisText(const ThermalScore& score, ThermalScoreBasis basis,
                      const TemperatureFormatter& temperatures) {
    switch (basis) {
    case ThermalScoreBasis::pressure:
        return "Pressure " + std::string(caseName(score.pressureLevel));
    case ThermalScoreBasis::state:
        return "Thermal state " + std::string(caseName(score.systemState));
    case ThermalScoreBasis::temperature:
        return "Temperature " + temperatures.text(score.temperatureCelsius).value_or("");
    case ThermalScoreBasis::nothing:
        break;
    }
    return {};
}

} // namespace

std::optional<std::string> scoreReason(const ThermalScore& score, const TemperatureFormatter& temperatures) {
    const auto steps = ThermalScorer::steps(score, ThermalTemperatureThresholds::defaults());
    if (steps.basis == ThermalScoreBasis::nothing) {
        return std::nullopt;
    }
    auto text = basisText(score, steps.basis, temperatures) + ": " + std::to_string(steps.points);
    if (steps.risingBonus > 0) {
        text += ". Rising: +" + std::to_string(steps.risingBonus);
    }
    return text;
}

std::string temperatureWithLimits(const TemperatureReading& reading, const TemperatureFormatter& temperatures,
                                  std::string_view separator) {
    auto text = temperatures.text(reading.celsius);
    for (const auto& [words, limit] :
         {std::pair<std::string_view, std::optional<double>>("slows from ", reading.limits.slowsFrom),
          {"switches off at ", reading.limits.switchesOffAt}}) {
        if (const auto limitText = temperatures.text(limit)) {
            text.append(separator).append(words).append(*limitText);
        }
    }
    return text;
}

const TemperatureReading* hottestSensor(const ThermalScore& score,
                                        const std::vector<TemperatureReading>& readings) {
    const auto hottest = std::ranges::find_if(readings, [&score](const TemperatureReading& each) {
        return each.celsius == score.temperatureCelsius && tellsProcessorHeat(each.kind);
    });
    return score.temperatureCelsius && hottest != readings.end() ? &*hottest : nullptr;
}

} // namespace cindertop
