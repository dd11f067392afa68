#pragma once

#include "context/DisplayContextSnapshot.h"
#include "context/PowerContextSnapshot.h"
#include "support/OperatingSystem.h"

#include <QString>
#include <QStringList>

namespace cindertop::ui {

/// "AC Power - charging - Power Saver".
QString powerText(const PowerContextSnapshot& power, OperatingSystem system);

/// "81%", "36°C", "Warm": what is known of them, else one sentence. `temperatureText` is the battery's
/// temperature in the user's unit; empty where it is not known.
QStringList batterySegments(const PowerContextSnapshot& power, const QString& temperatureText);

/// "Built-in display + 2 external displays".
QString displaysText(const DisplayContextSnapshot& displays);

} // namespace cindertop::ui
