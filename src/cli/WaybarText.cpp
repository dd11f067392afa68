#include "cli/WaybarText.h"

#include "cli/MachineText.h"
#include "report/Json.h"
#include "terminal/DisplayText.h"
#include "terminal/ValueText.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstddef>
#include <span>
#include <string_view>

namespace cindertop::cli {

namespace {

constexpr std::size_t shownOffenders = 3;

std::string markup(std::string_view text) {
    std::string escaped;
    for (const char character : text) {
        switch (character) {
        case '&':
            escaped += "&amp;";
            break;
        case '<':
            escaped += "&lt;";
            break;
        case '>':
            escaped += "&gt;";
            break;
        default:
            escaped += character;
        }
    }
    return escaped;
}

/// The temperature; without one the level, and without either that there is none.
std::string barText(const MachineSnapshot& snapshot, const PageStyle& style) {
    if (const auto temperature = style.temperatures.text(snapshot.score.temperatureCelsius)) {
        return shown(*temperature, Charset::unicode);
    }
    return std::string(isHeatKnown(snapshot.score) ? label(snapshot.score.level) : noHeatReadings);
}

std::string levelText(const ThermalScore& score) {
    return isHeatKnown(score)
               ? std::string(label(score.level)) + ", " + std::to_string(score.score) + " of 100"
               : std::string(noHeatReadings);
}

std::string tooltip(const MachineReport& report) {
    auto text = levelText(report.snapshot.score);
    if (!report.note.empty()) {
        text += '\n' + markup(report.note);
    }
    if (report.advice && report.advice->presentation.actionMessage) {
        text += '\n' + markup(shown(*report.advice->presentation.actionMessage, Charset::unicode));
    }
    const std::span offenders(report.snapshot.offenders.offenders);
    for (const auto& offender : offenders.first(std::min(offenders.size(), shownOffenders))) {
        text += '\n' + markup(shown(offender.displayName, Charset::unicode)) + "  " +
                markup(percentText(offender.cpuPercent));
    }
    return text;
}

} // namespace

std::string waybarText(const MachineReport& report, const PageStyle& style) {
    const auto& score = report.snapshot.score;
    Json module{{"text", barText(report.snapshot, style)},
                {"class", isHeatKnown(score) ? caseName(score.level) : "unknown"},
                {"tooltip", tooltip(report)}};
    if (isHeatKnown(score)) {
        module["percentage"] = score.score;
    }
    return compactText(module);
}

} // namespace cindertop::cli
