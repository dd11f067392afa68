#pragma once

#include <QString>

namespace cindertop::ui {

/// "59s", "1m", "1h 1m", "2h". A length that is negative, or no number, counts as 0.
QString formattedDuration(double seconds);

} // namespace cindertop::ui
