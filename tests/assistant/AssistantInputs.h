#pragma once

#include "assistant/CinderInsight.h"
#include "context/SystemContext.h"
#include "cpu/ProcessOffender.h"
#include "thermal/ThermalScore.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace cindertop::testing {

/// A moment `seconds` after the one at which every test begins.
inline Instant at(double seconds) {
    return Instant{std::chrono::seconds{1'731'760'000}} +
           std::chrono::duration_cast<std::chrono::nanoseconds>(Seconds{seconds});
}

inline ThermalScore scoreOf(ThermalLevel level, ThermalTrend trend = ThermalTrend::stable) {
    return {50,
            level,
            0,
            false,
            1,
            std::nullopt,
            ThermalDataSource::official,
            SystemThermalState::nominal,
            ThermalPressureLevel::nominal,
            trend,
            at(0)};
}

inline DisplayContextSnapshot displays(int builtIn, int external) {
    return {true, builtIn + external, builtIn, external};
}

inline PowerContextSnapshot power(PowerSourceKind source, std::optional<bool> isCharging,
                                  bool isAvailable = true) {
    return {isAvailable, source, 50, isCharging, std::nullopt, false, std::nullopt, std::nullopt};
}

inline SustainedThermalPressureSnapshot sustained(double duration, std::optional<ThermalLevel> level) {
    return {true, Seconds{duration}, level, ThermalLevel::serious};
}

/// One display, on mains, not charging, no sustained pressure, but for what is given.
inline SystemContextSnapshot
contextWith(const DisplayContextSnapshot& displays = {true, 1, 1, 0},
            const PowerContextSnapshot& power = testing::power(PowerSourceKind::acPower, false),
            const SustainedThermalPressureSnapshot& pressure = SustainedThermalPressureSnapshot::inactive()) {
    return {.displays = displays, .power = power, .sustainedPressure = pressure, .measuredAt = at(0)};
}

inline SystemContextSnapshot contextWith(const PowerContextSnapshot& power) {
    return contextWith(displays(1, 0), power);
}

inline SystemContextSnapshot contextWith(const SustainedThermalPressureSnapshot& pressure) {
    return contextWith(displays(1, 0), power(PowerSourceKind::acPower, false), pressure);
}

inline ProcessOffender offender(const std::string& name, double cpuPercent,
                                ProcessOffenderCategory category) {
    return ProcessOffender(
        {.id = "id:" + name, .displayName = name, .cpuPercent = cpuPercent, .category = category});
}

inline ProcessOffenderSnapshot readyOffenders(std::vector<ProcessOffender> offenders,
                                              bool isIndexing = false) {
    return {.state = ProcessOffenderSnapshotState::ready,
            .offenders = std::move(offenders),
            .isIndexingOrSetupLikely = isIndexing,
            .measuredAt = at(0)};
}

/// Advice of these kinds, the first as the primary one.
inline CinderRecommendationSnapshot adviceOf(const std::vector<CinderInsightKind>& kinds) {
    CinderRecommendationSnapshot snapshot;
    for (const auto kind : kinds) {
        snapshot.secondaryInsights.push_back({kind, CinderInsightConfidence::medium, "", "", std::nullopt});
    }
    if (!kinds.empty()) {
        snapshot.primaryInsight = snapshot.secondaryInsights.front();
        snapshot.secondaryInsights.erase(snapshot.secondaryInsights.begin());
    }
    return snapshot;
}

} // namespace cindertop::testing
