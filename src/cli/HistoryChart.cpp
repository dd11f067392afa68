#include "cli/HistoryChart.h"

#include "cli/MachineFacts.h"
#include "cli/MachineText.h"
#include "terminal/ValueText.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <ranges>
#include <string>
#include <utility>

namespace cindertop::cli {

namespace {

/// The samples of one column, as they come.
struct Gathered {
    ChartColumn column;
    double cpuSum = 0;
    int cpuCount = 0;

    void add(const ThermalHistorySample& sample) {
        if (isHeatKnown(sample)) {
            column.level = std::max(column.level.value_or(sample.level), sample.level);
        }
        if (sample.temperatureCelsius) {
            column.temperatureCelsius = std::max(
                column.temperatureCelsius.value_or(*sample.temperatureCelsius), *sample.temperatureCelsius);
        }
        if (sample.globalCPUPercent) {
            cpuSum += *sample.globalCPUPercent;
            ++cpuCount;
        }
    }

    ChartColumn result() const {
        auto result = column;
        if (cpuCount > 0) {
            result.cpuPercent = cpuSum / cpuCount;
        }
        return result;
    }
};

std::string_view cellOf(Charset charset) {
    return charset == Charset::unicode ? "█" : "#";
}

Line rowLabel(std::string_view text, Tone tone) {
    return {{paddedRight(text, labelColumns), tone}};
}

/// The pieces of a row one by one, neighbours of one tone as one span.
void extend(Line& line, std::string_view piece, Tone tone) {
    if (line.back().tone == tone) {
        line.back().text += piece;
    } else {
        line.emplace_back(std::string(piece), tone);
    }
}

std::string_view blockOf(double part, Charset charset) {
    static constexpr std::array<std::string_view, 8> blocks{"▁", "▂", "▃", "▄", "▅", "▆", "▇", "█"};
    static constexpr std::array<std::string_view, 8> letters{"_", ".", ":", "-", "=", "+", "*", "#"};
    const auto step = static_cast<std::size_t>(std::lround(std::clamp(part, 0.0, 1.0) * 7));
    return charset == Charset::unicode ? blocks.at(step) : letters.at(step);
}

constexpr int columnsOfTime = 5; ///< "23:05"

/// Minutes between the marks of an axis, so that their times do not touch.
int minutesBetweenMarks(const ChartTime& time) {
    constexpr int roomOfMark = columnsOfTime + 4;
    const double columnsOfMinute = time.columns / (Seconds(time.duration) / std::chrono::minutes(1));
    for (const int step : {5, 10, 15, 20, 30}) {
        if (step * columnsOfMinute >= roomOfMark) {
            return step;
        }
    }
    return 60;
}

struct Mark {
    int column;
    std::string time;
};

std::vector<Mark> marksOf(const ChartTime& time) {
    const int step = minutesBetweenMarks(time);
    std::vector<Mark> marks;
    for (auto minute = std::chrono::ceil<std::chrono::minutes>(time.start()); minute < time.end;
         minute += std::chrono::minutes(1)) {
        auto text = localTimeOfDay(minute).substr(0, columnsOfTime);
        const int minuteOfHour = (text[3] - '0') * 10 + (text[4] - '0');
        if (minuteOfHour % step == 0) {
            marks.push_back({.column = time.columnOf(minute).value_or(0), .time = std::move(text)});
        }
    }
    return marks;
}

} // namespace

std::optional<int> ChartTime::columnOf(Instant instant) const {
    if (instant < start()) {
        return std::nullopt;
    }
    const double part = secondsBetween(start(), instant) / Seconds(duration);
    return std::min(static_cast<int>(std::min(part, 1.0) * columns), columns - 1);
}

std::vector<ChartColumn> chartColumns(std::span<const ThermalHistorySample> samples, const ChartTime& time) {
    std::vector<Gathered> gathered(static_cast<std::size_t>(time.columns));
    for (const auto& sample : samples) {
        if (const auto column = time.columnOf(sample.measuredAt)) {
            gathered[static_cast<std::size_t>(*column)].add(sample);
        }
    }
    std::vector<ChartColumn> columns;
    columns.reserve(gathered.size());
    std::ranges::transform(gathered, std::back_inserter(columns), &Gathered::result);
    return columns;
}

std::vector<Line> levelRows(const std::vector<ChartColumn>& columns, Charset charset) {
    std::vector<Line> rows;
    for (const auto& [level, name] :
         casesOf<ThermalLevel>() | std::views::reverse | std::views::transform([](const auto& each) {
             return std::pair(each.value, label(each.value));
         })) {
        auto row = rowLabel(name, toneOf(level));
        for (const auto& column : columns) {
            const bool isFilled = column.level && *column.level >= level;
            extend(row, isFilled ? cellOf(charset) : " ", isFilled ? toneOf(*column.level) : Tone::plain);
        }
        rows.push_back(std::move(row));
    }
    return rows;
}

Line sparkline(std::string_view label, const std::vector<std::optional<double>>& values,
               const SparklineRange& range, Charset charset) {
    auto line = rowLabel(label, Tone::faint);
    for (const auto& value : values) {
        const double span = range.high - range.low;
        extend(line, value ? blockOf(span > 0 ? (*value - range.low) / span : 0, charset) : " ", Tone::plain);
    }
    return line;
}

std::vector<Line> timeAxis(const ChartTime& time, Charset charset) {
    const auto marks = marksOf(time);
    std::string axis;
    for (int column = 0; column < time.columns; ++column) {
        const bool isMarked = std::ranges::find(marks, column, &Mark::column) != marks.end();
        axis += charset == Charset::unicode ? (isMarked ? "┬" : "─") : (isMarked ? "+" : "-");
    }
    std::string times;
    for (const auto& [column, text] : marks) {
        const int used = static_cast<int>(times.size());
        if ((used == 0 || column > used) && column + columnsOfTime <= time.columns) {
            times += std::string(static_cast<std::size_t>(column - used), ' ') + text;
        }
    }
    const std::string blanks(labelColumns, ' ');
    return {{{blanks}, {axis, Tone::faint}}, {{blanks}, {times, Tone::faint}}};
}

} // namespace cindertop::cli
