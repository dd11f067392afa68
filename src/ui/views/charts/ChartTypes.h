#pragma once

#include "ui/ProcessLoadHistory.h"
#include "ui/ThermalHistoryReadout.h"
#include "ui/ThermalHistorySamples.h"

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
