#pragma once

#include "app/MachineSampler.h"
#include "persistence/ThermalHistory.h"

#include <string>

namespace cindertop::cli {

/// Whose CPU time the metrics tell.
enum class MetricsDetail {
    categories,   ///< kinds of work, without a name
    applications, ///< the applications by name as well
};

/// The machine in Prometheus' text format, and the day so far where the history knows it. What is not known
/// has no series.
std::string metricsText(const MachineSnapshot& snapshot, const ThermalMonitoringSnapshot& history,
                        MetricsDetail detail);

} // namespace cindertop::cli
