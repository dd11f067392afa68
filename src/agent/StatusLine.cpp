#include "agent/StatusLine.h"

#include "cli/MachineText.h"
#include "terminal/DisplayText.h"
#include "terminal/ValueText.h"

#include <algorithm>

#include <poll.h>

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

namespace {

/// Whether a line can be written at once. A terminal that was stopped (Ctrl-S) or a pipe that nobody reads
/// must not stop the program, too.
bool hasRoom(int descriptor) {
    pollfd place{.fd = descriptor, .events = POLLOUT, .revents = 0};
    return ::poll(&place, 1, 0) > 0;
}

} // namespace

StatusLines::StatusLines(const cli::Output& output, std::chrono::milliseconds pause)
    : output_(output), pause_(pause) {}

void StatusLines::tick(const AppState& state, const std::string& time, SteadyTime now) {
    const auto& published = state.published();
    const auto& advice = published.recommendationSnapshot->primaryInsight;
    const Headline headline{.level = published.thermalSnapshot->level,
                            .advice = advice ? std::optional(advice->kind) : std::nullopt};
    if (headline == lastHeadline_ && lastLine_ && now - *lastLine_ < pause_) {
        return;
    }
    lastHeadline_ = headline;
    lastLine_ = now;
    write(statusLine(state, time, cli::traitsOf(cli::readTerminalFacts(output_.descriptor())).format));
}

void StatusLines::note(const std::string& text) {
    const auto format = cli::traitsOf(cli::readTerminalFacts(output_.descriptor())).format;
    for (const auto& line : cli::wrapped(cli::shown(text, format.charset), format.columns)) {
        write({cli::Span(line, cli::Tone::strong)});
    }
}

void StatusLines::write(const cli::Line& line) {
    if (!hasRoom(output_.descriptor())) {
        return;
    }
    const auto format = cli::traitsOf(cli::readTerminalFacts(output_.descriptor())).format;
    [[maybe_unused]] const auto result = output_.write(encoded(line, format) + '\n');
}

} // namespace cindertop::agent
