#pragma once

#include "persistence/ThermalHistory.h"
#include "report/MachineReport.h"

#include <string>

namespace cindertop::cli {

/// Whose CPU time the metrics tell.
enum class MetricsDetail {
    categories,   ///< kinds of work, without a name
    applications, ///< the applications by name as well
};

/// The machine, with advice where an agent tells it, in Prometheus' text format, and the day so far where the
/// history knows it. What is not known has no series.
std::string metricsText(const MachineReport& report, const ThermalMonitoringSnapshot& history,
                        MetricsDetail detail);

} // namespace cindertop::cli
