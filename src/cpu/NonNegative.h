#pragma once

namespace cindertop {

/// The value itself, or 0 where it is negative or not a number.
constexpr double nonNegative(double value) {
    return value > 0 ? value : 0;
}

} // namespace cindertop
