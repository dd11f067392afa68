#include "assistant/RecommendationEngine.h"

#include "assistant/RecommendationCandidates.h"

#include <algorithm>
#include <cstddef>
#include <span>
#include <utility>
#include <vector>

namespace cindertop {

namespace {

/// Advice below this priority (critical and sustained pressure) needs no confirmation.
constexpr int firstUnhurriedPriority = 11;

std::vector<CinderInsight> insightsBeside(CinderInsightKind primaryKind,
                                          std::span<const RecommendationCandidate> candidates,
                                          std::size_t maximumCount) {
    std::vector<CinderInsight> insights;
    for (const auto& [insight, priority] : candidates) {
        if (insights.size() == maximumCount) {
            break;
        }
        if (insight.kind != primaryKind) {
            insights.push_back(insight);
        }
    }
    return insights;
}

} // namespace

CinderRecommendationSnapshot
RecommendationEngine::update(const ThermalScore& score, const SystemContextSnapshot& context,
                             const ProcessOffenderSnapshot& offenders,
                             const RecommendationEngineConfiguration& configuration, Instant now) {
    const auto candidates = recommendationCandidates(score, context, offenders, configuration, system_);
    auto primary = choosePrimary(candidates.front(), configuration.primaryInsightConfirmationCount);
    auto secondaries = insightsBeside(primary.kind, candidates,
                                      static_cast<std::size_t>(configuration.maximumSecondaryInsightCount));
    lastSnapshot_ = {
        .primaryInsight = std::move(primary), .secondaryInsights = std::move(secondaries), .measuredAt = now};
    return lastSnapshot_;
}

void RecommendationEngine::reset() {
    lastSnapshot_ = CinderRecommendationSnapshot::empty();
    clearPending();
}

CinderInsight RecommendationEngine::choosePrimary(const RecommendationCandidate& top, int confirmationCount) {
    const auto& previous = lastSnapshot_.primaryInsight;
    const bool needsConfirmation =
        previous && previous->kind != top.insight.kind && top.priority >= firstUnhurriedPriority;
    if (needsConfirmation && !isConfirmedBy(top.insight.kind, confirmationCount)) {
        return *previous;
    }
    clearPending();
    return top.insight;
}

bool RecommendationEngine::isConfirmedBy(CinderInsightKind leader, int confirmationCount) {
    pendingPrimaryCount_ = pendingPrimaryKind_ == leader ? pendingPrimaryCount_ + 1 : 1;
    pendingPrimaryKind_ = leader;
    return pendingPrimaryCount_ >= confirmationCount;
}

void RecommendationEngine::clearPending() {
    pendingPrimaryKind_.reset();
    pendingPrimaryCount_ = 0;
}

} // namespace cindertop
