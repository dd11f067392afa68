#pragma once

#include "support/Enumeration.h"

#include <array>
#include <cstdint>
#include <string_view>

namespace cindertop {

/// How much text the assistant shows.
enum class RecommendationVerbosity : std::uint8_t { concise, detailed };

template <>
struct EnumerationTable<RecommendationVerbosity> {
    static constexpr std::array cases{
        EnumerationCase{RecommendationVerbosity::concise, "concise"},
        EnumerationCase{RecommendationVerbosity::detailed, "detailed"},
    };
};

/// What people read, for example "Concise".
constexpr std::string_view label(RecommendationVerbosity verbosity) {
    return verbosity == RecommendationVerbosity::detailed ? "Detailed" : "Concise";
}

} // namespace cindertop
