#pragma once

#include "assistant/CinderInsight.h"
#include "support/Instant.h"

#include <optional>
#include <vector>

namespace cindertop {

/// The advice of one tick.
struct CinderRecommendationSnapshot {
    std::optional<CinderInsight> primaryInsight;  ///< what to lead with
    std::vector<CinderInsight> secondaryInsights; ///< the most urgent first, none of the primary's kind
    Instant measuredAt{unixEpoch};

    /// No advice yet.
    static const CinderRecommendationSnapshot& empty();

    bool operator==(const CinderRecommendationSnapshot&) const = default;
};

} // namespace cindertop
