#pragma once

#include "app/SnapshotJson.h"
#include "app/ThermalAssistantPresentation.h"
#include "assistant/CinderInsight.h"

namespace cindertop {

/// The advice as JSON, without its instant, which is the tick's.
Json recommendationJson(const CinderRecommendationSnapshot& snapshot);

Json presentationJson(const ThermalAssistantPresentation& presentation);

} // namespace cindertop
