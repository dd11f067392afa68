#pragma once

#include "context/DisplayContext.h"
#include "context/PowerContext.h"
#include "support/Wording.h"

#include <QString>
#include <QStringList>

namespace cindertop::ui {

/// "59s", "1m", "1h 1m", "2h". A length that is negative, or no number, counts as 0.
QString formattedDuration(double seconds);

/// "AC Power - charging - Power Saver".
QString powerText(const PowerContextSnapshot& power, OperatingSystem system);

/// "81%", "36°C", "Warm": what is known of them, else one sentence. `temperatureText` is the battery's
/// temperature in the user's unit; empty where it is not known.
QStringList batterySegments(const PowerContextSnapshot& power, const QString& temperatureText);

/// "Built-in display + 2 external displays".
QString displaysText(const DisplayContextSnapshot& displays);

} // namespace cindertop::ui
