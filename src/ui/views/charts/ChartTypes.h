#pragma once

#include "ui/presentation/ProcessLoadHistory.h"
#include "ui/presentation/ThermalHistoryPlot.h"

#include <QtQml/qqml.h>

// Makes the values that the charts draw known to QML.

struct ThermalHistorySamplesForeign {
    Q_GADGET
    QML_FOREIGN(cindertop::ui::ThermalHistorySamples)
    QML_VALUE_TYPE(thermalHistorySamples)
};

struct ThermalHistoryReadoutForeign {
    Q_GADGET
    QML_FOREIGN(cindertop::ui::ThermalHistoryReadout)
    QML_VALUE_TYPE(thermalHistoryReadout)
};

struct ProcessLoadHistoryForeign {
    Q_GADGET
    QML_FOREIGN(cindertop::ui::ProcessLoadHistory)
    QML_VALUE_TYPE(processLoadHistory)
};
