#include "assistant/CinderInsight.h"

namespace cindertop {

const CinderRecommendationSnapshot& CinderRecommendationSnapshot::empty() {
    static const CinderRecommendationSnapshot snapshot;
    return snapshot;
}

} // namespace cindertop
