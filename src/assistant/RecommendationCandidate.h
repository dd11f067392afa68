#pragma once

#include "assistant/CinderInsight.h"

namespace cindertop {

/// Advice that applies now, with its urgency.
struct RecommendationCandidate {
    CinderInsight insight;
    int priority{}; ///< lower is more urgent

    bool operator==(const RecommendationCandidate&) const = default;
};

} // namespace cindertop
