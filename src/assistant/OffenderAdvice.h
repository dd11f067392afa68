#pragma once

#include "assistant/RecommendationCandidate.h"
#include "cpu/ProcessOffender.h"
#include "thermal/ThermalLevel.h"

#include <string_view>

namespace cindertop {

/// Said of the system's indexing, with or without an offender that does it.
inline constexpr std::string_view backgroundIndexingTitle = "Background indexing";
inline constexpr std::string_view backgroundIndexingMessage =
    "Spotlight or setup work is active. It usually settles on its own.";

/// What to do about the busiest offender: by its name where that tells the work, else by its category.
RecommendationCandidate offenderAdvice(const ProcessOffender& offender, ThermalLevel level);

} // namespace cindertop
