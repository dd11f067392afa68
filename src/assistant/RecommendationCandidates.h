#pragma once

#include "assistant/RecommendationCandidate.h"
#include "assistant/RecommendationEngineConfiguration.h"
#include "context/SystemContextSnapshot.h"
#include "cpu/ProcessOffenderSnapshot.h"
#include "support/OperatingSystem.h"
#include "thermal/ThermalScore.h"

#include <vector>

namespace cindertop {

/// All advice that applies, the most urgent first; equal urgency goes by the kind's raw value, then by theme
/// (pressure, cooling, displays, processes, charging, level). `system` decides the wording. Never empty: the
/// level alone always gives advice.
std::vector<RecommendationCandidate>
recommendationCandidates(const ThermalScore& score, const SystemContextSnapshot& context,
                         const ProcessOffenderSnapshot& offenders,
                         const RecommendationEngineConfiguration& configuration, OperatingSystem system);

} // namespace cindertop
