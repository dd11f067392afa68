#pragma once

#include "support/Instant.h"
#include "thermal/ThermalLevel.h"

#include <cstdint>
#include <optional>
#include <string>

namespace cindertop {

/// The situation in which a sample was taken.
struct ThermalHistoryContextFlags {
    bool hasExternalDisplay = false;
    bool isProbableClamshell = false;
    bool isExternalPowerConnected = false;
    bool isLowPowerModeEnabled = false;
    bool isSustainedPressure = false;
    bool isIndexingOrSetupLikely = false;

    bool operator==(const ThermalHistoryContextFlags&) const = default;
};

/// One recorded moment.
struct ThermalHistorySample {
    Instant measuredAt;
    ThermalLevel level;
    std::int64_t score;                     ///< 0 to 100
    std::optional<double> globalCPUPercent; ///< 0 to 100 of the whole machine
    std::optional<double> temperatureCelsius;
    std::optional<std::string> topOffenderLabel;            ///< at most 48 characters, no path
    std::optional<std::string> topOffenderBundleIdentifier; ///< at most 128 letters, digits, ".", "_", "-"
    ThermalHistoryContextFlags contextFlags;

    /// Numbers are clamped into their ranges (NaN becomes 0), both texts go through their sanitiser, which
    /// may make them absent. The temperature stays as it is.
    ThermalHistorySample(Instant measuredAt, ThermalLevel level, std::int64_t score,
                         std::optional<double> globalCPUPercent, std::optional<double> temperatureCelsius,
                         const std::optional<std::string>& topOffenderLabel,
                         const std::optional<std::string>& topOffenderBundleIdentifier,
                         const ThermalHistoryContextFlags& contextFlags);

    bool operator==(const ThermalHistorySample&) const = default;
};

/// Whether anything told the machine's heat then. Each source that answers gives points or a temperature, so
/// the file needs no mark of its own.
inline bool isHeatKnown(const ThermalHistorySample& sample) {
    return sample.score > 0 || sample.temperatureCelsius.has_value();
}

} // namespace cindertop
