#pragma once

#include <cstdint>
#include <expected>
#include <string_view>

namespace cindertop::simulated {

enum class DecimalError { tooPrecise, tooLarge };

/// A JSON number × 10^`digits`, exactly: "-1.5e-3" with 6 digits is -1500. Trailing zeros are no precision.
std::expected<std::int64_t, DecimalError> scaledDecimal(std::string_view number, int digits);

} // namespace cindertop::simulated
