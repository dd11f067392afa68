#pragma once

#include "app/MachineSampler.h"
#include "app/SnapshotJson.h"
#include "app/ThermalAssistantPresentation.h"
#include "assistant/CinderInsight.h"

#include <optional>

namespace cindertop {

/// What a program that watches all the time makes of it.
struct MachineVerdict {
    CinderRecommendationSnapshot recommendation;
    ThermalAssistantPresentation presentation;

    bool operator==(const MachineVerdict&) const = default;
};

/// A live machine as one object, with absolute times: seconds since the Unix epoch. A single look has no
/// verdict.
Json machineJson(const MachineSnapshot& snapshot,
                 const std::optional<MachineVerdict>& verdict = std::nullopt);

/// The processes of a live machine alone.
Json offendersJson(const MachineSnapshot& snapshot);

} // namespace cindertop
