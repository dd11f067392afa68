#pragma once

#include "support/Enumeration.h"
#include "support/Instant.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

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
    graphicsWorkload,
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
        EnumerationCase{graphicsWorkload, "graphicsWorkload"},
    };
};

/// How sure the advice is of its cause.
enum class CinderInsightConfidence { low, medium, high };

template <>
struct EnumerationTable<CinderInsightConfidence> {
    static constexpr std::array cases{
        EnumerationCase{CinderInsightConfidence::low, "low"},
        EnumerationCase{CinderInsightConfidence::medium, "medium"},
        EnumerationCase{CinderInsightConfidence::high, "high"},
    };
};

/// One piece of advice. Lists tell insights apart by `id`.
struct CinderInsight {
    CinderInsightKind kind;
    CinderInsightConfidence confidence;
    std::string title;                            ///< a short heading
    std::string message;                          ///< one or two sentences
    std::optional<std::string> relatedOffenderID; ///< `id` of the offender that the advice is about

    CinderInsightKind id() const { return kind; }

    bool operator==(const CinderInsight&) const = default;
};

/// The advice of one tick.
struct CinderRecommendationSnapshot {
    std::optional<CinderInsight> primaryInsight;  ///< what to lead with
    std::vector<CinderInsight> secondaryInsights; ///< the most urgent first, none of the primary's kind
    Instant measuredAt{unixEpoch};

    /// No advice yet.
    static const CinderRecommendationSnapshot& empty();

    bool operator==(const CinderRecommendationSnapshot&) const = default;
};

} // namespace cindertop
