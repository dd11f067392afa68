#pragma once

#include "assistant/CinderInsightConfidence.h"
#include "assistant/CinderInsightKind.h"

#include <optional>
#include <string>

namespace cindertop {

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

} // namespace cindertop
