#pragma once

namespace cindertop::ui {

/// How every chart draws a line and the area below it. Widths in device-independent pixels.
inline constexpr double chartLineWidth = 1.75;
inline constexpr double chartFillOpacity = 0.16;

} // namespace cindertop::ui
