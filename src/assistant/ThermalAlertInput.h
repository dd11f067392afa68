#pragma once

#include "assistant/CinderRecommendationSnapshot.h"
#include "context/SystemContextSnapshot.h"
#include "support/Instant.h"
#include "thermal/ThermalScore.h"

#include <optional>
#include <string>

namespace cindertop {

/// What one evaluation of the alert rules looks at.
struct ThermalAlertInput {
    ThermalScore score;                  ///< only its level counts
    SystemContextSnapshot systemContext; ///< only the sustained pressure counts
    CinderRecommendationSnapshot recommendationSnapshot;
    std::optional<std::string> topOffenderLabel; ///< name of the busiest offender; absent when there is none
    Instant now;

    bool operator==(const ThermalAlertInput&) const = default;
};

} // namespace cindertop
