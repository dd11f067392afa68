#pragma once

#include <algorithm>

namespace cindertop {

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

} // namespace cindertop
