#pragma once

#include "assistant/CinderRecommendationSnapshot.h"
#include "assistant/ThermalAlertKind.h"
#include "support/OperatingSystem.h"

#include <optional>
#include <string>

namespace cindertop {

/// What an alert of this kind says. The current advice decides what it suggests; the label, the busiest
/// offender's name, has its place in the sentence where the advice is about an application. `system` decides
/// the wording.
std::string thermalAlertBody(ThermalAlertKind kind, const CinderRecommendationSnapshot& recommendation,
                             const std::optional<std::string>& topOffenderLabel, OperatingSystem system);

} // namespace cindertop
