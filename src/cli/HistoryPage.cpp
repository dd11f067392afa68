#include "cli/HistoryPage.h"

#include "cli/HistoryChart.h"
#include "cli/MachineText.h"
#include "terminal/ValueText.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace cindertop::cli {

namespace {

using Samples = SharedHistorySamples;
using OptionalNumber = std::optional<double>;

/// The values of one optional field, in so far as they were measured.
struct Extremes {
    double lowest;
    double highest;
    double average;
};

std::optional<Extremes> extremesOf(const Samples& samples, OptionalNumber ThermalHistorySample::* field) {
    std::optional<Extremes> extremes;
    double sum = 0;
    int count = 0;
    for (const auto& sample : samples) {
        if (const auto& value = sample.*field) {
            sum += *value;
            ++count;
            extremes = {.lowest = std::min(extremes ? extremes->lowest : *value, *value),
                        .highest = std::max(extremes ? extremes->highest : *value, *value),
                        .average = sum / count};
        }
    }
    return extremes;
}

std::vector<OptionalNumber> valuesOf(const std::vector<ChartColumn>& columns,
                                     OptionalNumber ChartColumn::* field) {
    std::vector<OptionalNumber> values;
    values.reserve(columns.size());
    std::ranges::transform(columns, std::back_inserter(values), field);
    return values;
}

/// A variation of a few degrees is not stretched to full height.
SparklineRange temperatureRange(const Extremes& extremes) {
    constexpr double leastSpan = 10;
    return {.low = extremes.lowest, .high = std::max(extremes.highest, extremes.lowest + leastSpan)};
}

bool isAnyHeatKnown(const Samples& samples) {
    return std::ranges::any_of(samples, [](const auto& sample) { return isHeatKnown(sample); });
}

std::vector<Line> chart(const ThermalMonitoringSnapshot& snapshot, std::chrono::minutes window,
                        const PageStyle& style) {
    const auto charset = style.format.charset;
    const ChartTime time{.end = snapshot.measuredAt,
                         .duration = window,
                         .columns = std::max(style.format.columns - labelColumns, 1)};
    const auto columns = chartColumns(snapshot.samples, time);
    auto lines = isAnyHeatKnown(snapshot.samples) ? levelRows(columns, charset)
                                                  : std::vector<Line>{{{std::string(noHeatReadings)}}, {}};
    if (const auto extremes = extremesOf(snapshot.samples, &ThermalHistorySample::temperatureCelsius)) {
        lines.push_back(sparkline("Temperature", valuesOf(columns, &ChartColumn::temperatureCelsius),
                                  temperatureRange(*extremes), charset));
    }
    if (extremesOf(snapshot.samples, &ThermalHistorySample::globalCPUPercent)) {
        lines.push_back(sparkline("Processor", valuesOf(columns, &ChartColumn::cpuPercent),
                                  {.low = 0, .high = 100}, charset));
    }
    append(lines, timeAxis(time, charset));
    return lines;
}

std::string counted(std::int64_t count, std::string_view one, std::string_view many) {
    return std::to_string(count) + " " + std::string(count == 1 ? one : many);
}

std::string recordedText(const ThermalMonitoringSnapshot& snapshot) {
    const auto& latest = snapshot.samples.back();
    const auto age = secondsBetween(latest.measuredAt, snapshot.measuredAt).count();
    return counted(std::ssize(snapshot.samples), "sample", "samples") + ", the latest " + durationText(age) +
           " ago" +
           (isHeatKnown(latest)
                ? ": " + std::to_string(latest.score) + " of 100, " + std::string(label(latest.level))
                : "");
}

std::string temperatureText(const Samples& samples, const PageStyle& style) {
    const auto extremes = extremesOf(samples, &ThermalHistorySample::temperatureCelsius);
    if (!extremes) {
        return std::string(notAvailable);
    }
    const auto text = [&](double celsius) {
        return shown(style.temperatures.text(celsius), style.format.charset);
    };
    return text(extremes->lowest) + " to " + text(extremes->highest);
}

/// Empty where no sample knew the heat.
std::string scoreText(const Samples& samples) {
    std::vector<std::int64_t> scores;
    for (const auto& sample : samples) {
        if (isHeatKnown(sample)) {
            scores.push_back(sample.score);
        }
    }
    if (scores.empty()) {
        return {};
    }
    const auto [lowest, highest] = std::ranges::minmax(scores);
    return std::to_string(lowest) + " to " + std::to_string(highest);
}

std::string processorText(const Samples& samples) {
    const auto extremes = extremesOf(samples, &ThermalHistorySample::globalCPUPercent);
    if (!extremes) {
        return std::string(notAvailable);
    }
    return percentText(extremes->lowest) + " to " + percentText(extremes->highest) + ", on average " +
           percentText(extremes->average);
}

std::vector<Line> sampleFacts(const ThermalMonitoringSnapshot& snapshot, const PageStyle& style) {
    auto lines = fact("Recorded", recordedText(snapshot), style);
    append(lines, fact("Score", scoreText(snapshot.samples), style));
    append(lines, fact("Temperature", temperatureText(snapshot.samples, style), style));
    append(lines, fact("Processor", processorText(snapshot.samples), style));
    return lines;
}

Line levelLine(ThermalLevel level, double seconds, double total, const PageStyle& style) {
    constexpr int durationColumns = 15;
    constexpr int shareColumns = 8;
    constexpr int gap = 2;
    const double share = total > 0 ? seconds / total : 0;
    const auto tone = seconds > 0 ? toneOf(level) : Tone::faint;
    Line line{{paddedRight(label(level), labelColumns), tone},
              {paddedRight(durationText(seconds), durationColumns)},
              {paddedLeft(percentText(share * 100), shareColumns)}};
    constexpr int shortestBar = 5;
    constexpr int longestBar = 40;
    const int room = std::min(style.format.columns - columnsOf(line) - gap, longestBar);
    if (room >= shortestBar) {
        line.emplace_back(std::string(gap, ' '));
        append(line, shareBar(share, room, tone, style.format.charset));
    }
    return line;
}

std::vector<Line> levelTable(const ThermalLevelDurations& durations, const PageStyle& style) {
    const auto total = durations.totalDuration();
    return {levelLine(ThermalLevel::normal, durations.normal, total, style),
            levelLine(ThermalLevel::fair, durations.fair, total, style),
            levelLine(ThermalLevel::serious, durations.serious, total, style),
            levelLine(ThermalLevel::critical, durations.critical, total, style)};
}

/// The few labels that were on top most often: "Browser (512 samples), Compiler (120)".
std::string busiestText(const ThermalDailySummary& summary, const LocalizedComparison& comparison,
                        Charset charset) {
    constexpr std::size_t most = 3;
    std::vector<std::pair<std::string, std::int64_t>> counts(summary.topOffenderCounts.begin(),
                                                             summary.topOffenderCounts.end());
    std::ranges::stable_sort(counts, [&](const auto& left, const auto& right) {
        return left.second != right.second ? left.second > right.second
                                           : comparison.compare(left.first, right.first) < 0;
    });
    counts.resize(std::min(counts.size(), most));
    std::string text;
    for (const auto& [name, count] : counts) {
        text += (text.empty() ? "" : ", ") + shown(name, charset) + " (";
        text += text.contains(", ") ? std::to_string(count) : counted(count, "sample", "samples");
        text += ")";
    }
    return text;
}

std::vector<Line> dayLines(const ThermalMonitoringSnapshot& snapshot, const HistoryPageContext& context,
                           const PageStyle& style) {
    const auto& summary = snapshot.todaySummary;
    const double total = summary.levelDurations.totalDuration();
    std::vector<Line> lines{{{"Today, " + shown(summary.dayIdentifier, style.format.charset), Tone::strong},
                             {total > 0 ? ": " + durationText(total) + " recorded" : "", Tone::faint}}};
    if (areLevelsMeasured(snapshot)) {
        append(lines, levelTable(summary.levelDurations, style));
    } else {
        lines.push_back({{std::string(noHeatReadings)}});
    }
    append(lines, fact("Episodes",
                       std::to_string(summary.throttlingEpisodeCount) + " of sustained pressure, " +
                           std::to_string(summary.criticalEpisodeCount) + " critical",
                       style));
    append(lines, fact("Busiest", busiestText(summary, context.comparison, style.format.charset), style));
    return lines;
}

bool isFresh(const ThermalDailySummary& summary) {
    return summary.levelDurations.totalDuration() == 0 && summary.throttlingEpisodeCount == 0 &&
           summary.criticalEpisodeCount == 0 && summary.topOffenderCounts.empty();
}

std::string windowText(std::chrono::minutes window) {
    return window >= std::chrono::hours(1) ? "hour" : std::to_string(window.count()) + " minutes";
}

std::vector<Line> emptyLines(const ThermalMonitoringSnapshot& snapshot, const HistoryPageContext& context,
                             const PageStyle& style) {
    std::string text = isFresh(snapshot.todaySummary)
                           ? "No history is stored: "
                           : "Nothing was recorded in the last " + windowText(context.window) + ": ";
    text += context.isHistoryEnabled
                ? "the Cindertop agent records while it runs with monitoring and history switched on."
                : "history is switched off in the settings.";
    std::vector<Line> lines;
    for (auto& part : wrapped(text, style.format.columns)) {
        lines.push_back({{std::move(part)}});
    }
    return lines;
}

Line titleLine(const ThermalMonitoringSnapshot& snapshot, std::chrono::minutes window, int columns) {
    const auto title = "The last " + windowText(window);
    const auto time = localDateAndTime(snapshot.measuredAt);
    const int room = columns - columnsOf(time);
    if (room <= columnsOf(title)) {
        return {{std::string(title), Tone::strong}};
    }
    return {{paddedRight(title, room), Tone::strong}, {time, Tone::faint}};
}

/// An agent that is at work holds the latest minutes.
std::vector<Line> writingLines(const std::optional<Instant>& writtenAt, int columns) {
    std::vector<Line> lines;
    if (writtenAt) {
        for (auto& part :
             wrapped("As written at " + localDateAndTime(*writtenAt) + "; no agent answers.", columns)) {
            lines.push_back({{std::move(part), Tone::faint}});
        }
    }
    return lines;
}

} // namespace

std::vector<Line> historyPage(const ThermalMonitoringSnapshot& recorded, const HistoryPageContext& context,
                              const PageStyle& style) {
    auto snapshot = recorded;
    const auto start = recorded.measuredAt - context.window;
    std::vector<ThermalHistorySample> shownSamples;
    std::ranges::copy_if(recorded.samples, std::back_inserter(shownSamples),
                         [start](const auto& sample) { return sample.measuredAt >= start; });
    snapshot.samples = SharedHistorySamples(std::move(shownSamples));
    std::vector<Line> lines;
    if (snapshot.samples.empty()) {
        lines = emptyLines(snapshot, context, style);
    } else {
        lines.push_back(titleLine(snapshot, context.window, style.format.columns));
        append(lines, writingLines(context.writtenAt, style.format.columns));
        lines.emplace_back();
        append(lines, chart(snapshot, context.window, style));
        lines.emplace_back();
        append(lines, sampleFacts(snapshot, style));
    }
    if (!isFresh(snapshot.todaySummary)) {
        lines.emplace_back();
        append(lines, dayLines(recorded, context, style));
    }
    return lines;
}

} // namespace cindertop::cli
