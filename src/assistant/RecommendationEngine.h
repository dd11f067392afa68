#pragma once

#include "assistant/CinderInsight.h"
#include "assistant/RecommendationCandidates.h"
#include "context/SystemContext.h"
#include "cpu/ProcessOffender.h"
#include "support/Instant.h"
#include "support/Wording.h"
#include "thermal/ThermalScore.h"

#include <optional>

namespace cindertop {

/// Chooses the advice of each tick. New advice of another kind leads only after several ticks in a row, so
/// that the headline does not flicker; urgent advice leads at once. A plain value for one thread.
class RecommendationEngine {
public:
    /// `system` decides the wording.
    explicit RecommendationEngine(OperatingSystem system) : system_(system) {}

    CinderRecommendationSnapshot update(const ThermalScore& score, const SystemContextSnapshot& context,
                                        const ProcessOffenderSnapshot& offenders,
                                        const RecommendationEngineConfiguration& configuration, Instant now);

    /// Forgets what led before: the next update leads with whatever is most urgent.
    void reset();

private:
    CinderInsight choosePrimary(const RecommendationCandidate& top, int confirmationCount);
    bool isConfirmedBy(CinderInsightKind leader, int confirmationCount);
    void clearPending();

    OperatingSystem system_;
    CinderRecommendationSnapshot lastSnapshot_;
    std::optional<CinderInsightKind> pendingPrimaryKind_; ///< leads the candidates, but is not yet confirmed
    int pendingPrimaryCount_{0};                          ///< for how many ticks in a row it has led
};

} // namespace cindertop
