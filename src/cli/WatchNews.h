#pragma once

#include "report/MachineReport.h"
#include "support/TemperatureText.h"

#include <chrono>
#include <optional>
#include <string>
#include <utility>

namespace cindertop::cli {

/// After so long a line comes even if it says nothing new.
inline constexpr std::chrono::seconds longestSilence{10};

/// Decides which ticks of a watch are worth a line in a log. A new level, or a new note, is told at once,
/// other changes at most once a second, and `longestSilence` is kept. Shares never stand still: they count
/// from five points on.
class WatchNews {
public:
    explicit WatchNews(TemperatureFormatter temperatures) : temperatures_(std::move(temperatures)) {}

    /// Whether to tell this tick; the next ones are compared with the last one that was.
    bool isNews(const MachineReport& report);

private:
    /// What a line says, as far as changes of it count.
    struct Told {
        Instant at;
        std::optional<ThermalLevel> level; ///< none: nothing reports the heat
        std::string note;
        int score;
        ThermalTrend trend;
        std::optional<std::string> temperature;
        std::optional<double> cpuPercent;
        ProcessOffenderSnapshotState offenders;
        std::string topOffender; ///< its identifier; empty without one
        std::optional<double> topPercent;
    };

    Told factsOf(const MachineReport& report) const;
    static bool isOtherLevel(const Told& now, const Told& before);
    static bool isChanged(const Told& now, const Told& before);

    TemperatureFormatter temperatures_;
    std::optional<Told> told_;
};

} // namespace cindertop::cli
