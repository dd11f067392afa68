#include "cli/WatchNews.h"

#include <cmath>
#include <utility>

namespace cindertop::cli {

namespace {

constexpr std::chrono::seconds shortestPause{1};
constexpr double shareStep = 5;

bool hasShareChanged(const std::optional<double>& now, const std::optional<double>& before) {
    return now.has_value() != before.has_value() || (now && std::abs(*now - *before) >= shareStep);
}

} // namespace

WatchNews::Told WatchNews::factsOf(const MachineReport& report) const {
    const auto& [score, context, offenders, cpuPercent, temperatures, sources, measuredAt] = report.snapshot;
    const auto* const top = offenders.offenders.empty() ? nullptr : &offenders.offenders.front();
    return {.at = measuredAt,
            .level = isHeatKnown(score) ? std::optional(score.level) : std::nullopt,
            .note = report.note,
            .score = score.score,
            .trend = score.trend,
            .temperature = temperatures_.text(score.temperatureCelsius),
            .cpuPercent = cpuPercent,
            .offenders = offenders.state,
            .topOffender = top == nullptr ? std::string() : top->id,
            .topPercent = top == nullptr ? std::nullopt : std::optional(top->cpuPercent)};
}

bool WatchNews::isOtherLevel(const Told& now, const Told& before) {
    return now.level != before.level || now.note != before.note;
}

bool WatchNews::isChanged(const Told& now, const Told& before) {
    return now.score != before.score || now.trend != before.trend || now.temperature != before.temperature ||
           now.offenders != before.offenders || now.topOffender != before.topOffender ||
           hasShareChanged(now.cpuPercent, before.cpuPercent) ||
           hasShareChanged(now.topPercent, before.topPercent);
}

bool WatchNews::isNews(const MachineReport& report) {
    auto now = factsOf(report);
    if (told_) {
        const auto silence = now.at - told_->at;
        const bool wasClockSetBack = now.at < told_->at;
        const bool isNews = wasClockSetBack || silence >= longestSilence || isOtherLevel(now, *told_) ||
                            (silence >= shortestPause && isChanged(now, *told_));
        if (!isNews) {
            return false;
        }
    }
    told_ = std::move(now);
    return true;
}

} // namespace cindertop::cli
