#pragma once

#include "assistant/CinderInsight.h"
#include "context/SystemContext.h"
#include "cpu/ProcessOffender.h"
#include "support/Wording.h"
#include "thermal/ThermalScore.h"

#include <algorithm>
#include <vector>

namespace cindertop {

/// Advice that applies now, with its urgency.
struct RecommendationCandidate {
    CinderInsight insight;
    int priority{}; ///< lower is more urgent

    bool operator==(const RecommendationCandidate&) const = default;
};

/// How steady, how long and about what the advice is.
struct RecommendationEngineConfiguration {
    int primaryInsightConfirmationCount; ///< ticks in a row before new advice leads, at least 1
    int maximumSecondaryInsightCount;    ///< 0 to 2
    bool includeProcessInsights;
    bool includeContextInsights; ///< about displays and charging

    /// A count outside its range becomes the nearer bound.
    constexpr RecommendationEngineConfiguration(int primaryInsightConfirmationCount,
                                                int maximumSecondaryInsightCount, bool includeProcessInsights,
                                                bool includeContextInsights)
        : primaryInsightConfirmationCount(std::max(primaryInsightConfirmationCount, 1)),
          maximumSecondaryInsightCount(std::clamp(maximumSecondaryInsightCount, 0, 2)),
          includeProcessInsights(includeProcessInsights),
          includeContextInsights(includeContextInsights) {}

    static constexpr RecommendationEngineConfiguration defaultConfiguration() { return {2, 2, true, true}; }

    bool operator==(const RecommendationEngineConfiguration&) const = default;
};

/// All advice that applies, the most urgent first; equal urgency goes by the kind's raw value, then by theme
/// (pressure, cooling, displays, processes, charging, level). `system` decides the wording. Never empty: the
/// level alone always gives advice.
std::vector<RecommendationCandidate>
recommendationCandidates(const ThermalScore& score, const SystemContextSnapshot& context,
                         const ProcessOffenderSnapshot& offenders,
                         const RecommendationEngineConfiguration& configuration, OperatingSystem system);

} // namespace cindertop
