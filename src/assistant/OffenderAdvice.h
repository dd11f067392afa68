#pragma once

#include "assistant/RecommendationCandidates.h"
#include "cpu/ProcessOffender.h"
#include "support/Wording.h"
#include "thermal/ThermalLevel.h"

namespace cindertop {

/// For the system's indexing, with or without an offender that does it.
inline constexpr auto backgroundIndexingTitle = Wording::same("Background indexing");
inline constexpr Wording backgroundIndexingMessage{
    "Spotlight or setup work is active. It usually settles on its own.",
    "File indexing or setup work is active. It usually settles on its own."};

/// What to do about the busiest offender: by its name where that tells the work, else by its category.
RecommendationCandidate offenderAdvice(const ProcessOffender& offender, ThermalLevel level,
                                       OperatingSystem system);

/// What to do about the application that draws most. It goes before the advice about the busiest one when its
/// graphics share is higher than that one's share of the processor.
RecommendationCandidate graphicsAdvice(const ProcessOffender& offender, double highestCPUPercent,
                                       ThermalLevel level);

} // namespace cindertop
