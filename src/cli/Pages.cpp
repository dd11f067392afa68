#include "cli/Pages.h"

#include "cli/MachineText.h"
#include "cli/OffenderTable.h"
#include "support/Enumeration.h"
#include "terminal/ValueText.h"

#include <algorithm>

namespace cindertop::cli {

namespace {

constexpr int childrenOnStatusPage = 3;
constexpr int rowsOfScreenPerSensorRow = 6;
constexpr int widestBar = 60;

std::vector<Line> scoreLines(const MachineSnapshot& snapshot, const PageFormat& format) {
    if (!isHeatKnown(snapshot.score)) {
        return {scoreLine(snapshot.score)};
    }
    return {scoreLine(snapshot.score),
            scoreBar(snapshot.score, std::min(format.columns, widestBar), format.charset)};
}

std::vector<Line> paragraph(std::string_view text, const PageFormat& format) {
    std::vector<Line> lines;
    for (auto& part : wrapped(shown(text, format.charset), format.columns)) {
        lines.push_back({{std::move(part)}});
    }
    return lines;
}

/// A title and its message, below a blank line.
std::vector<Line> insightLines(const CinderInsight& insight, Tone titleTone, const PageFormat& format) {
    std::vector<Line> lines{{}, {{shown(insight.title, format.charset), titleTone}}};
    append(lines, paragraph(insight.message, format));
    return lines;
}

/// What the agent advises first, and for those who want details what else it found.
std::vector<Line> adviceLines(const std::optional<MachineAdvice>& advice, const PageStyle& style) {
    if (!advice || !advice->recommendation.primaryInsight) {
        return {};
    }
    auto lines = insightLines(*advice->recommendation.primaryInsight, Tone::strong, style.format);
    if (style.verbosity == RecommendationVerbosity::detailed) {
        for (const auto& insight : advice->recommendation.secondaryInsights) {
            append(lines, insightLines(insight, Tone::plain, style.format));
        }
    }
    return lines;
}

/// A reason over as many lines as it needs, each below the first.
std::vector<Line> sourceLines(const SourceStatus& source, int nameColumns, const PageFormat& format) {
    const auto tone = source.isAvailable ? Tone::faint : Tone::plain;
    auto text = std::string(source.isAvailable ? "available" : notAvailable);
    if (!source.reason.empty()) {
        text += ": " + shown(source.reason, format.charset);
    }
    std::vector<Line> lines;
    for (auto& part : wrapped(text, format.columns - nameColumns - 4)) {
        const auto name = lines.empty() ? shown(source.name, format.charset) : std::string();
        lines.push_back({{"  " + paddedRight(name, nameColumns) + "  "}, {std::move(part), tone}});
    }
    return lines;
}

std::vector<Line> sourceTable(const MachineSnapshot& snapshot, const PageFormat& format) {
    int nameColumns = 0;
    for (const auto& source : snapshot.sources) {
        nameColumns = std::max(nameColumns, columnsOf(shown(source.name, format.charset)));
    }
    std::vector<Line> lines{{{"Where the facts come from", Tone::faint}}};
    for (const auto& source : snapshot.sources) {
        append(lines, sourceLines(source, nameColumns, format));
    }
    return lines;
}

Line titleLine(std::string_view title, std::string_view time, int columns) {
    const int room = columns - columnsOf(time);
    return {{paddedRight(title, room), Tone::strong}, {std::string(time), Tone::faint}};
}

Line footerLine(const MachineSnapshot& snapshot) {
    const auto available = std::ranges::count_if(snapshot.sources, &SourceStatus::isAvailable);
    return {{"q ends.  " + std::to_string(available) + " of " + std::to_string(snapshot.sources.size()) +
                 " sources answer; \"cindertopctl status\" names them.",
             Tone::faint}};
}

/// The sensors in one line, or all of them where they leave the applications enough of the screen.
std::vector<Line> watchSensors(const MachineSnapshot& snapshot, const PageStyle& style, int rows) {
    auto table = sensorTable(snapshot, style);
    if (static_cast<int>(table.size()) > rows / rowsOfScreenPerSensorRow) {
        table.resize(std::min<std::size_t>(table.size(), 1));
    }
    return table;
}

std::vector<Line> watchFacts(const MachineSnapshot& snapshot, const PageStyle& style, int rows) {
    auto facts = thermalFacts(snapshot, style);
    append(facts, watchSensors(snapshot, style, rows));
    append(facts, hardwareFacts(snapshot, style));
    append(facts, surroundingFacts(snapshot, style));
    return facts;
}

std::string scoreText(const ThermalScore& score) {
    return isHeatKnown(score) ? std::to_string(score.score) + " " + std::string(label(score.level)) + ", " +
                                    std::string(caseName(score.trend))
                              : "no heat readings";
}

std::string topText(const ProcessOffenderSnapshot& snapshot, const PageStyle& style) {
    if (snapshot.state == ProcessOffenderSnapshotState::collecting) {
        return "applications: measuring";
    }
    if (snapshot.state == ProcessOffenderSnapshotState::unavailable) {
        return "applications: " + std::string(notAvailable);
    }
    if (snapshot.offenders.empty()) {
        return "applications: none busy";
    }
    const auto& first = snapshot.offenders.front();
    return shown(first.displayName, style.format.charset) + " " + percentText(first.cpuPercent);
}

} // namespace

std::vector<Line> statusPage(const MachineReport& report, const PageStyle& style) {
    const auto& snapshot = report.snapshot;
    std::vector<Line> lines;
    if (!report.note.empty()) {
        lines = paragraph(report.note, style.format);
        lines.emplace_back();
    }
    append(lines, scoreLines(snapshot, style.format));
    append(lines, adviceLines(report.advice, style));
    lines.emplace_back();
    append(lines, thermalFacts(snapshot, style));
    append(lines, sensorTable(snapshot, style));
    append(lines, hardwareFacts(snapshot, style));
    append(lines, surroundingFacts(snapshot, style));
    lines.emplace_back();
    append(lines,
           offenderTable(snapshot.offenders, style.format, {.childrenOfOffender = childrenOnStatusPage}));
    lines.emplace_back();
    append(lines, sourceTable(snapshot, style.format));
    return lines;
}

std::vector<Line> offendersPage(const MachineSnapshot& snapshot, const PageStyle& style) {
    return offenderTable(snapshot.offenders, style.format, {});
}

std::vector<Line> watchPage(const MachineReport& report, const PageStyle& style, const ScreenLayout& layout,
                            std::string_view time) {
    const auto& snapshot = report.snapshot;
    const int rows = layout.rows;
    constexpr int smallestWithFooter = 4;
    constexpr int smallestTable = 4; // a blank line, the heading and two rows
    std::vector<Line> lines{titleLine("Cindertop", time, style.format.columns)};
    if (!report.note.empty()) {
        append(lines, paragraph(report.note, style.format));
    }
    append(lines, scoreLines(snapshot, style.format));
    append(lines, adviceLines(report.advice, style));
    auto facts = watchFacts(snapshot, style, rows);
    const auto room = [&] { return rows - static_cast<int>(lines.size()) - 1; }; // 1 for the footer
    if (room() > static_cast<int>(facts.size()) + smallestTable) {
        lines.emplace_back();
        append(lines, std::move(facts));
    }
    if (room() >= smallestTable) {
        lines.emplace_back();
        append(lines,
               offenderTable(snapshot.offenders, style.format, {.rows = room(), .order = layout.order}));
    }
    lines.resize(static_cast<std::size_t>(std::max(rows, 1)));
    if (rows >= smallestWithFooter) {
        lines.back() = footerLine(snapshot);
    }
    return lines;
}

std::string watchLine(const MachineSnapshot& snapshot, const PageStyle& style, std::string_view time) {
    const auto& score = snapshot.score;
    const auto temperature = style.temperatures.text(score.temperatureCelsius);
    std::string text(time);
    text += "  " + scoreText(score);
    text += "  temperature " +
            (temperature ? shown(*temperature, style.format.charset) : std::string(notAvailable));
    text += "  CPU " + cpuText(snapshot);
    text += "  " + topText(snapshot.offenders, style);
    return text;
}

} // namespace cindertop::cli
