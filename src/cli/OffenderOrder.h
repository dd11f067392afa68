#pragma once

#include "support/Enumeration.h"

#include <array>
#include <string_view>

namespace cindertop {

namespace cli {

/// How a list of applications is ordered.
enum class OffenderOrder { cpu, graphics, name };

} // namespace cli

template <>
struct EnumerationTable<cli::OffenderOrder> {
    static constexpr std::array cases{
        EnumerationCase{cli::OffenderOrder::cpu, "cpu"},
        EnumerationCase{cli::OffenderOrder::graphics, "graphics"},
        EnumerationCase{cli::OffenderOrder::name, "name"},
    };
};

} // namespace cindertop
