#pragma once

#include "persistence/ThermalHistorySample.h"

#include <QObject>
#include <vector>

namespace cindertop::ui {

/// The samples of a history on their way through QML, oldest first.
struct ThermalHistorySamples {
    Q_GADGET

public:
    std::vector<ThermalHistorySample> values;

    bool operator==(const ThermalHistorySamples&) const = default;
};

} // namespace cindertop::ui
