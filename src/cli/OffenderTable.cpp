#include "cli/OffenderTable.h"

#include "support/Text.h"
#include "terminal/ValueText.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <ranges>
#include <span>
#include <string>
#include <string_view>

namespace cindertop::cli {

namespace {

constexpr int shareColumns = 8;
constexpr int graphicsColumns = 8;
constexpr int detailColumns = 15; ///< "999 processes", "pid 4194304"
constexpr int gap = 2;
constexpr int trendColumns = 16;
constexpr int columnsWithTrend = 100; ///< narrower pages have no room for a trend
constexpr int narrowestName = 8;

struct TableShape {
    int name;
    int trend;    ///< 0: none
    int graphics; ///< 0: nobody tells what they draw

    TableShape(const PageFormat& format, bool showsGraphics)
        : trend(format.charset == Charset::unicode && format.columns >= columnsWithTrend ? trendColumns : 0),
          graphics(showsGraphics ? graphicsColumns : 0) {
        const int trendAndGap = trend == 0 ? 0 : trend + gap;
        name = std::max(format.columns - shareColumns - graphics - detailColumns - gap - trendAndGap,
                        narrowestName);
    }
};

/// One row, before it is laid out.
struct Row {
    std::string name;
    std::string detail;
    std::string trend{};
    std::string graphics{};
    std::string share{};
    Tone nameTone = Tone::plain;
    Tone shareTone = Tone::plain;
};

class Table {
public:
    Table(const PageFormat& format, bool showsGraphics) : format_(format), shape_(format, showsGraphics) {}

    Line line(const Row& row) const {
        Line line{{paddedRight(fitted(row.name, shape_.name, format_.charset), shape_.name), row.nameTone},
                  {std::string(gap, ' ') + paddedRight(row.detail, detailColumns), Tone::faint}};
        if (shape_.trend > 0) {
            line.emplace_back(paddedLeft(row.trend, shape_.trend) + std::string(gap, ' '), Tone::faint);
        }
        line.emplace_back(paddedLeft(row.share, shareColumns), row.shareTone);
        if (shape_.graphics > 0) {
            line.emplace_back(paddedLeft(row.graphics, shape_.graphics), row.shareTone);
        }
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

std::string graphicsText(const std::optional<double>& graphicsPercent) {
    return graphicsPercent ? percentText(*graphicsPercent) : std::string();
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
            .graphics = graphicsText(offender.graphicsPercent),
            .share = percentText(offender.cpuPercent),
            .nameTone = Tone::strong,
            .shareTone = Tone::strong};
}

Row childRow(const ProcessOffenderChild& child, const Table& table) {
    return {.name = "  " + table.shownName(child.name),
            .detail = pidText(child.processIdentifier),
            .graphics = graphicsText(child.graphicsPercent),
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

/// Rows below each offender: evenly one process more for each, the busiest first, as long as there is room.
std::vector<int> sharedRows(std::span<const ProcessOffender> offenders, int spare, int listedAtMost) {
    std::vector<int> rows(offenders.size());
    const auto mostKnown = std::ranges::max(
        offenders | std::views::transform([](const auto& each) { return std::ssize(each.children); }));
    for (int listed = 1; listed <= std::min<std::int64_t>(mostKnown, listedAtMost); ++listed) {
        for (std::size_t index = 0; index < offenders.size(); ++index) {
            const int wanted = wantedRows(offenders[index], listed);
            if (wanted - rows[index] <= spare) {
                spare -= wanted - rows[index];
                rows[index] = wanted;
            }
        }
    }
    return rows;
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

/// The places of the offenders in the order in which they are listed.
std::vector<std::size_t> indicesInOrder(std::span<const ProcessOffender> offenders, OffenderOrder order) {
    std::vector<std::size_t> indices;
    indices.reserve(offenders.size());
    for (std::size_t index = 0; index < offenders.size(); ++index) {
        indices.push_back(index);
    }
    if (order == OffenderOrder::graphics) { // what is not known comes last
        std::ranges::stable_sort(indices, std::greater(),
                                 [offenders](std::size_t index) { return offenders[index].graphicsPercent; });
    } else if (order == OffenderOrder::name) {
        std::ranges::stable_sort(
            indices, {}, [offenders](std::size_t index) { return lowerCased(offenders[index].displayName); });
    }
    return indices;
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
    const bool showsGraphics = std::ranges::any_of(
        snapshot.offenders, [](const auto& offender) { return offender.graphicsPercent.has_value(); });
    const Table table(format, showsGraphics);
    std::vector<Line> lines;
    if (room.rows < 1) {
        return lines;
    }
    lines.push_back(table.line({.name = "Applications",
                                .detail = {},
                                .graphics = "GPU",
                                .share = "CPU",
                                .nameTone = Tone::faint,
                                .shareTone = Tone::faint}));
    if (snapshot.offenders.empty() && room.rows > 1) {
        lines.push_back({{std::string(emptyText(snapshot.state))}});
        return lines;
    }
    const auto count = std::min(static_cast<int>(snapshot.offenders.size()), room.rows - 1);
    if (count == 0) {
        return lines;
    }
    const auto offenders = std::span(snapshot.offenders).first(static_cast<std::size_t>(count));
    const auto rows = sharedRows(offenders, room.rows - 1 - count, room.childrenOfOffender);
    for (const auto index : indicesInOrder(offenders, room.order)) {
        lines.push_back(table.line(offenderRow(offenders[index], table)));
        if (rows[index] > 0) {
            appendChildren(lines, offenders[index], rows[index], table);
        }
    }
    return lines;
}

} // namespace cindertop::cli
