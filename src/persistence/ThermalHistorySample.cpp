#include "persistence/ThermalHistorySample.h"

#include "persistence/HistorySanitizers.h"

#include <algorithm>

namespace cindertop {
namespace {

double clampedPercent(double percent) {
    return percent > 0 ? std::min(percent, 100.0) : 0; // NaN is above nothing
}

} // namespace

ThermalHistorySample::ThermalHistorySample(Instant measuredAt, ThermalLevel level, std::int64_t score,
                                           std::optional<double> globalCPUPercent,
                                           std::optional<double> temperatureCelsius,
                                           const std::optional<std::string>& topOffenderLabel,
                                           const std::optional<std::string>& topOffenderBundleIdentifier,
                                           const ThermalHistoryContextFlags& contextFlags)
    : measuredAt(measuredAt),
      level(level),
      score(std::clamp<std::int64_t>(score, 0, 100)),
      globalCPUPercent(globalCPUPercent.transform(clampedPercent)),
      temperatureCelsius(temperatureCelsius),
      topOffenderLabel(topOffenderLabel.and_then(sanitizedLabel)),
      topOffenderBundleIdentifier(topOffenderBundleIdentifier.and_then(sanitizedBundleIdentifier)),
      contextFlags(contextFlags) {}

} // namespace cindertop
