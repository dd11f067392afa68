#include "cli/OffenderTable.h"

#include "terminal/ValueText.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <ranges>
#include <string>
#include <string_view>

namespace cindertop::cli {

namespace {

constexpr int shareColumns = 8;
constexpr int detailColumns = 15; ///< "999 processes", "pid 4194304"
constexpr int gap = 2;
constexpr int trendColumns = 16;
constexpr int columnsWithTrend = 100; ///< narrower pages have no room for a trend
constexpr int narrowestName = 8;

struct TableShape {
    int name;
    int trend; ///< 0: none

    explicit TableShape(const PageFormat& format)
        : trend(format.charset == Charset::unicode && format.columns >= columnsWithTrend ? trendColumns : 0) {
        const int trendAndGap = trend == 0 ? 0 : trend + gap;
        name = std::max(format.columns - shareColumns - detailColumns - gap - trendAndGap, narrowestName);
    }
};

/// One row, before it is laid out.
struct Row {
    std::string name;
    std::string detail;
    std::string trend{};
    std::string share{};
    Tone nameTone = Tone::plain;
    Tone shareTone = Tone::plain;
};

class Table {
public:
    explicit Table(const PageFormat& format) : format_(format), shape_(format) {}

    Line line(const Row& row) const {
        Line line{{paddedRight(fitted(row.name, shape_.name, format_.charset), shape_.name), row.nameTone},
                  {std::string(gap, ' ') + paddedRight(row.detail, detailColumns), Tone::faint}};
        if (shape_.trend > 0) {
            line.emplace_back(paddedLeft(row.trend, shape_.trend) + std::string(gap, ' '), Tone::faint);
        }
        line.emplace_back(paddedLeft(row.share, shareColumns), row.shareTone);
        return line;
    }

    std::string shownName(const std::string& name) const { return shown(name, format_.charset); }

    int trendLength() const { return shape_.trend; }

private:
    PageFormat format_;
    TableShape shape_;
};

/// The latest shares as a row of blocks, the highest of them as the full one.
std::string trendText(const std::vector<ProcessOffenderHistoryPoint>& history, int columns) {
    static constexpr std::array<std::string_view, 8> steps{"▁", "▂", "▃", "▄", "▅", "▆", "▇", "█"};
    if (columns == 0 || history.size() < 2) {
        return {};
    }
    const auto count = std::min(history.size(), static_cast<std::size_t>(columns));
    const auto first = history.end() - static_cast<std::ptrdiff_t>(count);
    const auto highest = std::ranges::max(history, {}, &ProcessOffenderHistoryPoint::cpuPercent).cpuPercent;
    std::string text;
    for (auto point = first; point != history.end(); ++point) {
        const double part = highest > 0 ? point->cpuPercent / highest : 0;
        text += steps.at(static_cast<std::size_t>(std::lround(part * (steps.size() - 1))));
    }
    return text;
}

std::string pidText(std::int32_t processIdentifier) {
    return "pid " + std::to_string(processIdentifier);
}

std::string detailText(const ProcessOffender& offender) {
    if (offender.processCount == 1 && offender.representativeProcessIdentifier) {
        return pidText(*offender.representativeProcessIdentifier);
    }
    return std::to_string(offender.processCount) + (offender.processCount == 1 ? " process" : " processes");
}

Row offenderRow(const ProcessOffender& offender, const Table& table) {
    return {.name = table.shownName(offender.displayName),
            .detail = detailText(offender),
            .trend = trendText(offender.history, table.trendLength()),
            .share = percentText(offender.cpuPercent),
            .nameTone = Tone::strong,
            .shareTone = Tone::strong};
}

Row childRow(const ProcessOffenderChild& child, const Table& table) {
    return {.name = "  " + table.shownName(child.name),
            .detail = pidText(child.processIdentifier),
            .share = percentText(child.cpuPercent),
            .shareTone = Tone::faint};
}

Row remainderRow(std::int64_t count) {
    return {.name = "  and " + std::to_string(count) + " more", .detail = {}, .nameTone = Tone::faint};
}

/// Rows wanted below an offender: its processes, and one that counts those that are not listed.
int wantedRows(const ProcessOffender& offender, int listedAtMost) {
    if (offender.processCount < 2 || offender.children.empty()) {
        return 0;
    }
    const auto known = std::ssize(offender.children);
    const auto listed = std::min<std::int64_t>(known, listedAtMost);
    return static_cast<int>(listed) + (offender.processCount > listed ? 1 : 0);
}

/// A lone "and 12 more" says nothing that the row above does not say.
int grantedRows(int wanted, int spare) {
    return spare < std::min(wanted, 2) ? 0 : std::min(wanted, spare);
}

void appendChildren(std::vector<Line>& lines, const ProcessOffender& offender, int rows, const Table& table) {
    const bool allFit =
        offender.processCount <= rows && std::ssize(offender.children) == offender.processCount;
    const std::int64_t listed = allFit ? offender.processCount : rows - 1;
    for (const auto& child : offender.children | std::views::take(listed)) {
        lines.push_back(table.line(childRow(child, table)));
    }
    if (!allFit) {
        lines.push_back(table.line(remainderRow(offender.processCount - listed)));
    }
}

std::string_view emptyText(ProcessOffenderSnapshotState state) {
    switch (state) {
    case ProcessOffenderSnapshotState::collecting:
        return "measuring";
    case ProcessOffenderSnapshotState::ready:
        return "no application used the processor just now";
    case ProcessOffenderSnapshotState::unavailable:
        break;
    }
    return "not available: the processes cannot be listed";
}

} // namespace

std::vector<Line> offenderTable(const ProcessOffenderSnapshot& snapshot, const PageFormat& format,
                                const OffenderTableRoom& room) {
    const Table table(format);
    std::vector<Line> lines;
    if (room.rows < 1) {
        return lines;
    }
    lines.push_back(table.line({.name = "Applications",
                                .detail = {},
                                .share = "CPU",
                                .nameTone = Tone::faint,
                                .shareTone = Tone::faint}));
    if (snapshot.offenders.empty() && room.rows > 1) {
        lines.push_back({{std::string(emptyText(snapshot.state))}});
        return lines;
    }
    const auto count = std::min(static_cast<int>(snapshot.offenders.size()), room.rows - 1);
    int spare = room.rows - 1 - count;
    for (const auto& offender : snapshot.offenders | std::views::take(count)) {
        const int rows = grantedRows(wantedRows(offender, room.childrenOfOffender), spare);
        lines.push_back(table.line(offenderRow(offender, table)));
        if (rows > 0) {
            appendChildren(lines, offender, rows, table);
        }
        spare -= rows;
    }
    return lines;
}

} // namespace cindertop::cli
