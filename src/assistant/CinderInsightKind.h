#pragma once

#include "support/Enumeration.h"

#include <array>

namespace cindertop {

/// What a piece of advice is about.
enum class CinderInsightKind {
    normalForWorkload,
    externalDisplayThermalLoad,
    probableClamshellHeat,
    chargingAddsHeat,
    topCpuOffender,
    browserTabLikely,
    developerBuildWorkload,
    gamingFpsCapRecommended,
    localAIWorkload,
    backgroundIndexingLikely,
    sustainedSeriousPressure,
    coolingRecovery,
};

template <>
struct EnumerationTable<CinderInsightKind> {
    using enum CinderInsightKind;
    static constexpr std::array cases{
        EnumerationCase{normalForWorkload, "normalForWorkload"},
        EnumerationCase{externalDisplayThermalLoad, "externalDisplayThermalLoad"},
        EnumerationCase{probableClamshellHeat, "probableClamshellHeat"},
        EnumerationCase{chargingAddsHeat, "chargingAddsHeat"},
        EnumerationCase{topCpuOffender, "topCpuOffender"},
        EnumerationCase{browserTabLikely, "browserTabLikely"},
        EnumerationCase{developerBuildWorkload, "developerBuildWorkload"},
        EnumerationCase{gamingFpsCapRecommended, "gamingFpsCapRecommended"},
        EnumerationCase{localAIWorkload, "localAIWorkload"},
        EnumerationCase{backgroundIndexingLikely, "backgroundIndexingLikely"},
        EnumerationCase{sustainedSeriousPressure, "sustainedSeriousPressure"},
        EnumerationCase{coolingRecovery, "coolingRecovery"},
    };
};

} // namespace cindertop
