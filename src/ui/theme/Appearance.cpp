#include "ui/theme/Appearance.h"

#include <algorithm>
#include <utility>

namespace cindertop::ui {

namespace {

constexpr double smallestText = 0.5;
constexpr double largestText = 3;

} // namespace

void Appearance::setDark(bool isDark) {
    if (std::exchange(isDark_, isDark) != isDark) {
        Q_EMIT changed();
    }
}

void Appearance::setReducesMotion(bool reducesMotion) {
    if (std::exchange(reducesMotion_, reducesMotion) != reducesMotion) {
        Q_EMIT changed();
    }
}

void Appearance::setTextScale(double textScale) {
    const double kept = std::clamp(textScale, smallestText, largestText);
    if (std::exchange(textScale_, kept) != kept) {
        Q_EMIT changed();
    }
}

} // namespace cindertop::ui
