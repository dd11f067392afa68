#pragma once

#include "ui/presentation/SettingsPresentation.h"
#include "ui/presentation/SystemTexts.h"

#include <QtQml/qqml.h>

// Makes the program's types known to the views of this folder.

struct SettingsPresentationForeign {
    Q_GADGET
    QML_FOREIGN(cindertop::ui::SettingsPresentation)
    QML_NAMED_ELEMENT(SettingsPresentation)
    QML_UNCREATABLE("the program makes it")
};

struct InfoPresentationForeign {
    Q_GADGET
    QML_FOREIGN(cindertop::ui::InfoPresentation)
    QML_NAMED_ELEMENT(InfoPresentation)
    QML_UNCREATABLE("the program makes it")
};

struct HeatPresentationForeign {
    Q_GADGET
    QML_FOREIGN(cindertop::ui::HeatPresentation)
    QML_NAMED_ELEMENT(HeatPresentation)
    QML_UNCREATABLE("the program makes it")
};

struct MonitoringPresentationForeign {
    Q_GADGET
    QML_FOREIGN(cindertop::ui::MonitoringPresentation)
    QML_NAMED_ELEMENT(MonitoringPresentation)
    QML_UNCREATABLE("the program makes it")
};

struct CPUPresentationForeign {
    Q_GADGET
    QML_FOREIGN(cindertop::ui::CPUPresentation)
    QML_NAMED_ELEMENT(CPUPresentation)
    QML_UNCREATABLE("the program makes it")
};

struct ProcessOffenderDetailForeign {
    Q_GADGET
    QML_FOREIGN(cindertop::ui::ProcessOffenderDetail)
    QML_NAMED_ELEMENT(ProcessOffenderDetail)
    QML_UNCREATABLE("the program makes it")
};

struct SystemPresentationForeign {
    Q_GADGET
    QML_FOREIGN(cindertop::ui::SystemPresentation)
    QML_NAMED_ELEMENT(SystemPresentation)
    QML_UNCREATABLE("the program makes it")
};

struct SystemTextsForeign {
    Q_GADGET
    QML_FOREIGN(cindertop::ui::SystemTexts)
    QML_VALUE_TYPE(systemTexts)
};
