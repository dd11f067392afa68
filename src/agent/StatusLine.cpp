#include "agent/StatusLine.h"

#include "cli/DisplayText.h"
#include "cli/MachineWords.h"
#include "cli/NumberText.h"

#include <algorithm>

namespace cindertop::agent {

namespace {

using cli::Charset;
using cli::Line;
using cli::Span;
using cli::Tone;

constexpr int levelColumns = 8;
constexpr int scoreColumns = 3;
constexpr int temperatureColumns = 5;
constexpr int heatColumns = levelColumns + 1 + scoreColumns + 2 + temperatureColumns + 2;
constexpr int offenderColumns = 20;
constexpr int shareColumns = 8;

std::string trendMark(ThermalTrend trend, Charset charset) {
    const bool isUnicode = charset == Charset::unicode;
    switch (trend) {
    case ThermalTrend::rising:
        return isUnicode ? "↑" : "^";
    case ThermalTrend::cooling:
        return isUnicode ? "↓" : "v";
    case ThermalTrend::stable:
        break;
    }
    return " ";
}

Line heat(const ThermalSnapshot& snapshot, bool isHeatKnown, Charset charset) {
    if (!isHeatKnown) {
        return {Span(cli::paddedRight(cli::noHeatReadings, heatColumns), Tone::faint)};
    }
    const auto tone = cli::toneOf(snapshot.level);
    const auto temperature = cli::shown(snapshot.temperatureText, charset);
    return {Span(cli::paddedRight(std::string(label(snapshot.level)), levelColumns), tone),
            Span(" " + cli::paddedLeft(std::to_string(snapshot.score), scoreColumns), tone),
            Span("  " + cli::paddedLeft(temperature, temperatureColumns)),
            Span(" " + trendMark(snapshot.trend, charset), Tone::strong)};
}

Line busiest(const ProcessOffenderSnapshot& snapshot, Charset charset) {
    std::string name;
    std::string share;
    if (snapshot.state == ProcessOffenderSnapshotState::ready && !snapshot.offenders.empty()) {
        const auto& offender = snapshot.offenders.front();
        name = cli::fitted(cli::shown(offender.displayName, charset), offenderColumns, charset);
        share = cli::percentText(offender.cpuPercent);
    }
    return {Span("  " + cli::paddedRight(name, offenderColumns)),
            Span(cli::paddedLeft(share, shareColumns), Tone::faint)};
}

} // namespace

cli::Line statusLine(const AppState& state, const std::string& time, const cli::PageFormat& format) {
    const auto& published = state.published();
    const auto& score = state.latestThermalScore();
    Line line{Span(time + "  ", Tone::faint)};
    append(line, heat(*published.thermalSnapshot, score && isHeatKnown(*score), format.charset));
    append(line, busiest(*published.processOffenderSnapshot, format.charset));
    const auto advice = state.currentRecommendation().primaryInsight;
    const int room = format.columns - columnsOf(line) - 2;
    if (advice && room > 0) {
        const auto title = cli::shown(advice->title, format.charset);
        line.emplace_back("  " + cli::fitted(title, room, format.charset));
    }
    return line;
}

} // namespace cindertop::agent
