#pragma once

#include "persistence/SharedHistorySamples.h"

#include <QObject>

namespace cindertop::ui {

/// The samples of a history on their way through QML, oldest first.
struct ThermalHistorySamples {
    Q_GADGET

public:
    SharedHistorySamples values;

    bool operator==(const ThermalHistorySamples&) const = default;
};

} // namespace cindertop::ui
