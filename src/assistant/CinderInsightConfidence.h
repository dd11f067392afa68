#pragma once

#include "support/Enumeration.h"

#include <array>

namespace cindertop {

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

} // namespace cindertop
